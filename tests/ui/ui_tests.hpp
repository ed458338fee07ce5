#pragma once
// The list of window test classes, each made by a function of its own file.
#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace vornelt::qt::testing {

struct UiTest {
    const char* name;
    std::function<std::unique_ptr<QObject>()> make;
};

std::unique_ptr<QObject> MakeMainWindowTest();
std::unique_ptr<QObject> MakeSmallWindowsTest();
std::unique_ptr<QObject> MakeApplicationTest();
std::unique_ptr<QObject> MakeResponsivenessTest();

inline std::vector<UiTest> AllUiTests() {
    return {{"MainWindowTest", MakeMainWindowTest},
            {"SmallWindowsTest", MakeSmallWindowsTest},
            {"ApplicationTest", MakeApplicationTest},
            {"ResponsivenessTest", MakeResponsivenessTest}};
}

}  // namespace vornelt::qt::testing
