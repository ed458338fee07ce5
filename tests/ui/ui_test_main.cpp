// The window tests: one Qt Test class per run, named on the command line (all without one).
#include <QApplication>
#include <QTest>

#include <cstring>
#include <memory>

#include "ui/qt/qt_util.hpp"

namespace vornelt::qt::testing {
std::unique_ptr<QObject> MakeMainWindowTest();
std::unique_ptr<QObject> MakeSmallWindowsTest();
std::unique_ptr<QObject> MakeApplicationTest();
std::unique_ptr<QObject> MakeResponsivenessTest();
}  // namespace vornelt::qt::testing

int main(int argc, char** argv) {
    using namespace vornelt::qt::testing;
    const struct {
        const char* name;
        std::unique_ptr<QObject> (*make)();
    } tests[] = {{"MainWindowTest", MakeMainWindowTest},
                 {"SmallWindowsTest", MakeSmallWindowsTest},
                 {"ApplicationTest", MakeApplicationTest},
                 {"ResponsivenessTest", MakeResponsivenessTest}};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    vornelt::qt::SetUpApplicationLook();
    const char* only = argc > 1 && argv[1][0] != '-' ? argv[1] : nullptr;
    int status = 0;
    for (const auto& t : tests) {
        if (only && std::strcmp(only, t.name) != 0) continue;
        std::unique_ptr<QObject> test = t.make();
        char* args[] = {argv[0]};
        status |= QTest::qExec(test.get(), 1, args);
    }
    return status;
}
