#pragma once
// The small windows on screen: the frame-rate question, the progress window, the start-up
// window and the about window. Each mirrors its record.

#include <QDialog>
#include <QLabel>
#include <QTimer>

#include <cstdint>

class QComboBox;
class QProgressBar;
class QPushButton;

namespace vornelt {
struct ProgressWindow;
}

namespace vornelt::qt {

class AppShell;

class FrameRateView : public QDialog {
    Q_OBJECT
public:
    FrameRateView(AppShell& shell, bool droped, QWidget* parent = nullptr);
    void Mirror();
    void CloseForGood();
    uint64_t Instance() const { return instance_; }
    QComboBox* Popup() const { return popup_; }
    QPushButton* Ok() const { return ok_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    AppShell& shell_;
    bool droped_;
    uint64_t instance_ = 0;
    bool closingForGood_ = false;
    QComboBox* popup_ = nullptr;
    QPushButton* ok_ = nullptr;
};

class ProgressView : public QDialog {
    Q_OBJECT
public:
    // Mirrors the progress window of the session.
    explicit ProgressView(const ProgressWindow& record, QWidget* parent = nullptr);
    void Mirror();
    // Paints the control now, or soon when it was painted a moment ago.
    void RedrawNow(QWidget* control);
    QLabel* Headline() const { return headline_; }
    QLabel* Detail() const { return detail_; }
    QProgressBar* Bar() const { return bar_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override {}

private:
    const ProgressWindow& record_;
    QLabel* headline_ = nullptr;
    QLabel* detail_ = nullptr;
    QProgressBar* bar_ = nullptr;
    qint64 lastPaint_ = 0;
};

// The splash picture with the program's name and version on it.
class SplashView : public QDialog {
    Q_OBJECT
public:
    SplashView(int nameTop, QWidget* parent);
    uint64_t Instance() const { return instance_; }
    void CloseForGood();

protected:
    QLabel* programName_ = nullptr;
    QLabel* version_ = nullptr;
    uint64_t instance_ = 0;
    bool closingForGood_ = false;
};

class StartUpView : public SplashView {
    Q_OBJECT
public:
    explicit StartUpView(AppShell& shell);
    void Mirror();
    QTimer& Timer1() { return timer_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override {}

private:
    AppShell& shell_;
    QTimer timer_;
    uint64_t timerResets_ = 0;
};

// The link to the maker's web site.
class LinkLabel : public QLabel {
    Q_OBJECT
public:
    LinkLabel(AppShell& shell, QWidget* parent);

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    AppShell& shell_;
    bool claimed_ = false;
};

class AboutView : public SplashView {
    Q_OBJECT
public:
    explicit AboutView(AppShell& shell);
    void Mirror();
    LinkLabel* Link() const { return link_; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    AppShell& shell_;
    LinkLabel* link_ = nullptr;
};

}  // namespace vornelt::qt
