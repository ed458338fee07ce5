#include "ui/qt/small_windows.hpp"

#include <QCloseEvent>
#include <QComboBox>
#include <QDateTime>
#include <QFontMetrics>
#include <QFrame>
#include <QKeyEvent>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>

#include "ui/qt/app_shell.hpp"
#include "ui/qt/qt_util.hpp"
#include "ui/windows.hpp"

namespace vornelt::qt {

namespace {

QLabel* MakeLabel(QWidget* parent, const char* name, const QString& text, QRect rect) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(QString::fromUtf8(name));
    l->setGeometry(rect);
    return l;
}

QFrame* MakeSeparator(QWidget* parent, const char* name, QRect rect) {
    auto* line = new QFrame(parent);
    line->setObjectName(QString::fromUtf8(name));
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    line->setGeometry(rect);
    return line;
}

void SetTextColour(QWidget* w, const QColor& colour) {
    QPalette pal = w->palette();
    pal.setColor(QPalette::WindowText, colour);
    pal.setColor(QPalette::Text, colour);
    w->setPalette(pal);
}

}  // namespace

// ---- the frame-rate question ----

FrameRateView::FrameRateView(AppShell& shell, bool droped, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      shell_(shell),
      droped_(droped) {
    setObjectName(droped ? "FrameRateWindowIfDroped" : "FrameRateWindow");
    setWindowModality(Qt::ApplicationModal);

    popup_ = new QComboBox(this);
    popup_->setObjectName("PopupMenu1");
    for (const FrameRate rate : FrameRate::All()) popup_->addItem(ToQ(rate.Label()));
#if !defined(Q_OS_MACOS)
    // The rows were measured for a narrower system font.
    popup_->setFont(ControlFont(10));
#endif
    // The box shows the widest row whole, and the window grows with it.
    int widest = 0;
    for (int row = 0; row < popup_->count(); ++row)
        widest = std::max(widest, QFontMetrics(popup_->font()).horizontalAdvance(popup_->itemText(row)));
    const int box = std::max(158, widest + 36);
    const int width = 140 + box + 22;
    popup_->setGeometry(140, 69, box, 20);
    setFixedSize(width, 166);

    QLabel* question =
        MakeLabel(this, "StaticText2", QStringLiteral("TV Standard of incomming EDL?"), {18, 14, width - 38, 20});
    question->setFont(ControlFont(0, true));
    question->setAlignment(Qt::AlignCenter);
    MakeSeparator(this, "Separator2", {20, 46, width - 38, 12});
    QLabel* rate = MakeLabel(this, "StaticText1", QStringLiteral("EDL Frame-Rate:"), {18, 70, 110, 20});
    rate->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    connect(popup_, &QComboBox::activated, this, [this](int row) {
        shell_.Dispatch([this, row](Desktop& d) {
            if (droped_) {
                if (!FrameRateWindowIfDropedExists(d)) return;
                FrameRateWindowIfDroped(d).PopupMenu1.ListIndex = row;
                FrameRateWindowIfDroped_PopupMenu1_Change(d);
            } else {
                if (!FrameRateWindowExists(d)) return;
                FrameRateWindow(d).PopupMenu1.ListIndex = row;
                FrameRateWindow_PopupMenu1_Change(d);
            }
        });
    });

    MakeSeparator(this, "Separator1", {18, 102, width - 40, 12});

    // The only button: there is no way back but OK.
    ok_ = new QPushButton(QStringLiteral("OK"), this);
    ok_->setObjectName("PushButton1");
    ok_->setGeometry(width - 102, 126, 80, 20);
    ok_->setDefault(true);
    ok_->setAutoDefault(true);
    connect(ok_, &QPushButton::clicked, this, [this] {
        shell_.Dispatch(droped_ ? FrameRateWindowIfDroped_PushButton1_Action : FrameRateWindow_PushButton1_Action);
    });
    Mirror();
}

void FrameRateView::Mirror() {
    Desktop& d = shell_.desktop();
    const bool exists = droped_ ? FrameRateWindowIfDropedExists(d) : FrameRateWindowExists(d);
    if (!exists) return;
    const FrameRateWindowState& w = droped_ ? FrameRateWindowIfDroped(d) : FrameRateWindow(d);
    instance_ = w.Instance;
    setWindowTitle(ToQ(w.Title));
    const QSignalBlocker block(popup_);
    if (w.PopupMenu1.ListIndex >= 0 && w.PopupMenu1.ListIndex < popup_->count())
        popup_->setCurrentIndex(w.PopupMenu1.ListIndex);
}

void FrameRateView::CloseForGood() {
    closingForGood_ = true;
    hide();
}

void FrameRateView::reject() {
    // Escape is the close box: the chain ends with no load.
    close();
}

void FrameRateView::closeEvent(QCloseEvent* event) {
    if (closingForGood_) return event->accept();
    // Closed by its title bar or Escape: the chain ends here, with no load.
    shell_.Dispatch(droped_ ? CloseFrameRateWindowIfDroped : CloseFrameRateWindow);
    event->accept();
}

// ---- the progress window ----

ProgressView::ProgressView(const ProgressWindow& record, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), record_(record) {
    setObjectName("ProgressBarWindow");
    setWindowModality(Qt::ApplicationModal);
    setFixedSize(500, 112);
    headline_ = MakeLabel(this, "ST_Headline", QString(), {20, 14, 460, 20});
    headline_->setFont(ControlFont(0, true));
    bar_ = new QProgressBar(this);
    bar_->setObjectName("ProgressBar1");
    bar_->setGeometry(20, 46, 460, 20);
    bar_->setTextVisible(false);
    detail_ = MakeLabel(this, "ST_Detail", QString(), {20, 78, 460, 14});
    detail_->setFont(ControlFont(10));
    Mirror();
}

void ProgressView::Mirror() {
    if (!record_.open) return;
    const ProgressBarWindowState& p = record_.state;
    setWindowTitle(ToQ(p.Title));
    headline_->setText(ToQ(p.ST_Headline.Text));
    detail_->setText(ToQ(p.ST_Detail.Text));
    // A bar without a maximum has no measure: it shows that work goes on.
    const int maximum = std::max(0, p.ProgressBar1.Maximum);
    if (bar_->maximum() != maximum || bar_->minimum() != 0) bar_->setRange(0, maximum);
    if (maximum > 0) bar_->setValue(std::clamp(p.ProgressBar1.Value, 0, maximum));
}

void ProgressView::RedrawNow(QWidget* control) {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (isVisible() && now - lastPaint_ >= 15) {
        lastPaint_ = now;
        control->repaint();
    } else {
        control->update();
    }
}

void ProgressView::closeEvent(QCloseEvent* event) {
    // The reader closes it; the user cannot.
    event->ignore();
}

// ---- start-up and about ----

SplashView::SplashView(int nameTop, QWidget* parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    setWindowTitle(QStringLiteral("Ohne Titel"));
    setFixedSize(600, 350);
    auto* canvas = new QLabel(this);
    canvas->setObjectName("Canvas1");
    canvas->setGeometry(0, 0, 600, 350);
    canvas->setPixmap(Picture(":/images/splash.svg", {600, 350}, devicePixelRatioF()));
    programName_ = MakeLabel(this, "ST_ProgramName", QStringLiteral("Vornelt"), {280, nameTop, 300, 32});
    programName_->setFont(ControlFont(24, true));
    SetTextColour(programName_, Qt::black);
    version_ = MakeLabel(this, "ST_Version", QStringLiteral("Version:"), {288, nameTop + 36, 292, 14});
    version_->setFont(ControlFont(10));
    SetTextColour(version_, Qt::black);
}

void SplashView::CloseForGood() {
    closingForGood_ = true;
    hide();
}

StartUpView::StartUpView(AppShell& shell) : SplashView(60, nullptr), shell_(shell) {
    setObjectName("StartUpWindow");
    timer_.setObjectName("Timer1");
    connect(&timer_, &QTimer::timeout, this, [this] { shell_.Dispatch(StartUpWindow_Timer1_Action); });
    Mirror();
}

void StartUpView::Mirror() {
    Desktop& d = shell_.desktop();
    if (!StartUpWindowExists(d)) return;
    const StartUpWindowState& w = StartUpWindow(d);
    instance_ = w.Instance;
    version_->setText(ToQ(w.ST_Version.Text));
    if (w.Timer1.Resets != timerResets_) {
        timerResets_ = w.Timer1.Resets;
        timer_.stop();
        if (w.Timer1.mode != TimerState::Mode::Off) {
            timer_.setSingleShot(w.Timer1.mode == TimerState::Mode::Single);
            timer_.start(w.Timer1.Period);
        }
    }
}

void StartUpView::closeEvent(QCloseEvent* event) {
    // No way to close it sooner than its timer.
    if (closingForGood_) return event->accept();
    event->ignore();
}

LinkLabel::LinkLabel(AppShell& shell, QWidget* parent) : QLabel(parent), shell_(shell) {}

void LinkLabel::enterEvent(QEnterEvent*) { shell_.Dispatch(ST_www_MouseEnter); }

void LinkLabel::leaveEvent(QEvent*) {
    if (AboutWindow2Exists(shell_.desktop())) shell_.Dispatch(ST_www_MouseExit);
}

void LinkLabel::mousePressEvent(QMouseEvent* event) {
    claimed_ = false;
    shell_.Dispatch([this](Desktop& d) { claimed_ = ST_www_MouseDown(d); });
    if (claimed_)
        event->accept();
    else
        QLabel::mousePressEvent(event);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (!claimed_) return QLabel::mouseReleaseEvent(event);
    claimed_ = false;
    // Wherever the pointer is by now.
    shell_.Dispatch(ST_www_MouseUp);
}

AboutView::AboutView(AppShell& shell) : SplashView(44, nullptr), shell_(shell) {
    setObjectName("AboutWindow2");
    setWindowModality(Qt::ApplicationModal);
    const QColor grey(0x7f, 0x80, 0x7f);
    auto credit = [&](const char* name, const char* role, const char* who, int left) {
        QLabel* l = MakeLabel(this, name, QString::fromUtf8(role) + "\n" + QString::fromUtf8(who), {left, 230, 90, 30});
        l->setFont(ControlFont(10));
        l->setAlignment(Qt::AlignCenter);
        SetTextColour(l, grey);
    };
    credit("ST_CreditIdea", "Idea & Icon:", "The Editors", 288);
    credit("ST_CreditProgramming", "Programming:", "Vornelt Team", 383);
    credit("ST_CreditHelp", "With help from:", "Qt & Friends", 490);

    link_ = new LinkLabel(shell_, this);
    link_->setObjectName("ST_www");
    link_->setText(ToQ(kWebSiteText));
    link_->setGeometry(288, 262, 292, 20);
    link_->setAlignment(Qt::AlignCenter);
    QFont f = ControlFont(10, true);
    f.setUnderline(true);
    link_->setFont(f);
    SetTextColour(link_, QColor(0x00, 0x00, 0xff));
    Mirror();
}

void AboutView::Mirror() {
    Desktop& d = shell_.desktop();
    if (!AboutWindow2Exists(d)) return;
    const AboutWindow2State& w = AboutWindow2(d);
    instance_ = w.Instance;
    version_->setText(ToQ(w.ST_Version.Text));
    setCursor(CursorShapeOf(w.Cursor));
}

void AboutView::mousePressEvent(QMouseEvent* event) {
    // A click anywhere but on the link closes the window.
    bool claimed = false;
    shell_.Dispatch([&](Desktop& d) { claimed = AboutWindow2_Event_MouseDown(d); });
    if (claimed) event->accept();
}

void AboutView::reject() {
    // Escape closes the window as a click does; the next request makes a new one.
    if (AboutWindow2Exists(shell_.desktop())) shell_.Dispatch(CloseAboutWindow2);
}

void AboutView::closeEvent(QCloseEvent* event) {
    if (!closingForGood_ && AboutWindow2Exists(shell_.desktop())) shell_.Dispatch(CloseAboutWindow2);
    event->accept();
}

}  // namespace vornelt::qt
