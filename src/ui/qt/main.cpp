// Vornelt, the desktop application.
#include <QApplication>
#include <QFileOpenEvent>
#include <QIcon>

#include "ui/qt/app_shell.hpp"
#include "ui/qt/qt_util.hpp"
#include "vornelt/processor.hpp"

#include <cstdio>

namespace {

// The system hands documents to the application (on macOS by an event of its own).
class Application : public QApplication {
public:
    Application(int& argc, char** argv) : QApplication(argc, argv) {}
    vornelt::qt::AppShell* shell = nullptr;

protected:
    bool event(QEvent* e) override {
        if (e->type() == QEvent::FileOpen && shell) {
            shell->OpenDocument(static_cast<QFileOpenEvent*>(e)->file());
            return true;
        }
        return QApplication::event(e);
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (const char* missing = vornelt::MissingProcessorFeature()) {
        std::fprintf(stderr, "vornelt: this processor lacks the %s instruction, which Vornelt needs\n", missing);
        return 1;
    }
    Application app(argc, argv);
    Application::setApplicationName(QStringLiteral("Vornelt"));
    Application::setApplicationVersion(QStringLiteral(VORNELT_VERSION_STRING));
    Application::setOrganizationName(QStringLiteral("Vornelt"));
    Application::setWindowIcon(QIcon(QStringLiteral(":/images/vornelt.svg")));
#if !defined(Q_OS_MACOS)
    Application::setDesktopFileName(QStringLiteral("vornelt"));
#endif
    vornelt::qt::SetUpApplicationLook();
    Application::setQuitOnLastWindowClosed(false);

    // The shell makes the Qt platform and the desktop that runs on it.
    vornelt::qt::AppShell shell;
#if !defined(Q_OS_MACOS)
    shell.quitWhenMainWindowCloses = true;
#endif
    app.shell = &shell;

    QStringList documents = Application::arguments();
    documents.removeFirst();
    shell.Start(documents);
    const int status = Application::exec();

    app.shell = nullptr;
    return status;
}
