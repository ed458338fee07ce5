// The window tests: one Qt Test class per run, named on the command line (all without one).
#include <QApplication>
#include <QTest>

#include <cstring>

#include "ui/qt/qt_util.hpp"
#include "ui_tests.hpp"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    vornelt::qt::SetUpApplicationLook();
    const char* only = argc > 1 && argv[1][0] != '-' ? argv[1] : nullptr;
    int status = 0;
    for (const vornelt::qt::testing::UiTest& t : vornelt::qt::testing::AllUiTests()) {
        if (only && std::strcmp(only, t.name) != 0) continue;
        std::unique_ptr<QObject> test = t.make();
        char* args[] = {argv[0]};
        status |= QTest::qExec(test.get(), 1, args);
    }
    return status;
}
