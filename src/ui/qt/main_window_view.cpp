#include "ui/qt/main_window_view.hpp"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QUrl>

#include "document/document.hpp"
#include "text/text.hpp"
#include "ui/handlers.hpp"
#include "ui/qt/app_shell.hpp"
#include "ui/qt/list_view.hpp"
#include "ui/qt/qt_util.hpp"
#include "ui/windows.hpp"
#include "vornelt/options.hpp"

namespace vornelt::qt {

namespace {

constexpr int kWidth = 980;
constexpr int kHeight = 640;
constexpr int kSmall = 10;  // the size of the controls in boxes and of the field labels

// The surface that holds the controls; it lays out the anchored ones as it grows.
class Surface : public QWidget {
public:
    explicit Surface(std::function<void()> onResize) : onResize_(std::move(onResize)) {}

protected:
    void resizeEvent(QResizeEvent*) override { onResize_(); }

private:
    std::function<void()> onResize_;
};

// The file of a drag that the text area takes: the first file of the drag, when it is a local
// file of the list type. The others are not looked at, lists or not.
std::optional<QString> DroppableFile(const QMimeData* mime) {
    if (!mime || !mime->hasUrls() || mime->urls().isEmpty()) return std::nullopt;
    const QUrl first = mime->urls().constFirst();
    if (!first.isLocalFile()) return std::nullopt;
    const QString path = first.toLocalFile();
    if (!FileTypeAccepts(FileTypes1.pText, FromQ(QFileInfo(path).fileName()))) return std::nullopt;
    return path;
}

// A dragged list is always taken as a copy, whatever the source proposes: a source that
// honours a move would delete the file, which is read only after the frame-rate question.
// A source that offers no copy is refused.
bool TakeAsCopy(QDropEvent* e) {
    if (!(e->possibleActions() & Qt::CopyAction)) {
        e->ignore();
        return false;
    }
    e->setDropAction(Qt::CopyAction);
    e->accept();
    return true;
}

// The caption of an option's control (a field's label for a field), as the options table has it.
QString OptionCaption(std::string_view control) {
    for (const Option& o : kOptions)
        if (o.control == control) return ToQ(o.caption);
    return {};
}

// The text without its control characters (U+0000 to U+001F and U+007F).
QString WithoutControlCharacters(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (QChar c : text)
        if (c.unicode() >= 0x20 && c.unicode() != 0x7F) out += c;
    return out;
}

}  // namespace

// ---- the entry fields ----

EntryFieldWidget::EntryFieldWidget(AppShell& shell, EntryField MainWindowState::*field, QWidget* parent)
    : QLineEdit(parent), shell_(shell), field_(field) {
    connect(this, &QLineEdit::textChanged, this, &EntryFieldWidget::TextEdited);
}

int EntryFieldWidget::VirtualKeyCode(int qtKey) {
    switch (qtKey) {
        case Qt::Key_Left: return keycode::kLeftArrow;
        case Qt::Key_Right: return keycode::kRightArrow;
        case Qt::Key_Down: return keycode::kDownArrow;
        case Qt::Key_Up: return keycode::kUpArrow;
        case Qt::Key_Delete: return keycode::kForwardDelete;
        case Qt::Key_Backspace: return keycode::kDelete;
        case Qt::Key_Tab:
        case Qt::Key_Backtab: return keycode::kTab;
        case Qt::Key_Enter: return keycode::kEnter;
        case Qt::Key_Return: return keycode::kReturn;
        default: return keycode::kNone;
    }
}

bool EntryFieldWidget::event(QEvent* e) {
    if (e->type() == QEvent::KeyPress && shell_.desktop().session.MainWindowExists()) {
        auto* key = static_cast<QKeyEvent*>(e);
        // Commands (with the command or control key) are no typed characters: they reach the
        // field as the toolkit's editing commands.
        if (!(key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier))) {
            const std::string text = FromQ(key->text());
            const int code = VirtualKeyCode(key->key());
            bool swallowed = false;
            shell_.Dispatch([&](Desktop& d) {
                switch ((d.session.MainWindow().*field_).FieldKind()) {
                    case EntryField::Kind::ReelName: swallowed = EF_ReelName_KeyDown(d, text, code); break;
                    case EntryField::Kind::SeqTitle: swallowed = EF_SeqTitle_KeyDown(d, text, code); break;
                    case EntryField::Kind::RenderedMovie: swallowed = EF_RenderedMovie_KeyDown(d, text, code); break;
                }
            });
            if (swallowed) {
                e->accept();
                return true;
            }
            // Typed in capitals at once, the same fold that the change handling makes: the
            // field's undo then steps over whole edits instead of back to small letters.
            const QString folded = ToQ(Uppercase(text));
            if (folded != key->text()) {
                QKeyEvent capital(key->type(), key->key(), key->modifiers(), folded, key->isAutoRepeat(), key->count());
                const bool done = QLineEdit::event(&capital);
                e->setAccepted(capital.isAccepted());
                return done;
            }
        } else if (key->matches(QKeySequence::Paste)) {
            PasteInCapitals();
            e->accept();
            return true;
        }
    }
    return QLineEdit::event(e);
}

void EntryFieldWidget::PasteInCapitals() {
    if (isReadOnly()) return;
    InsertPasted(QGuiApplication::clipboard()->text());
}

void EntryFieldWidget::InsertPasted(const QString& text) {
    // Pasted text passes no key filter: it is folded like typing, and loses the characters
    // that no key of a one-line field gives (line ends, tabs, the other control characters).
    insert(ToQ(Uppercase(FromQ(WithoutControlCharacters(text)))));
}

void EntryFieldWidget::mouseReleaseEvent(QMouseEvent* e) {
    // The middle button pastes the desktop's selection, where there is one.
    if (e->button() == Qt::MiddleButton && !isReadOnly() && QGuiApplication::clipboard()->supportsSelection()) {
        deselect();
        InsertPasted(QGuiApplication::clipboard()->text(QClipboard::Selection));
        e->accept();
        return;
    }
    QLineEdit::mouseReleaseEvent(e);
}

void EntryFieldWidget::dropEvent(QDropEvent* e) {
    // Dragged text is pasted text.
    const QMimeData* mime = e->mimeData();
    if (!mime || !mime->hasText() || WithoutControlCharacters(mime->text()) == mime->text())
        return QLineEdit::dropEvent(e);
    QMimeData clean;
    clean.setText(WithoutControlCharacters(mime->text()));
    QDropEvent cleaned(e->position(), e->possibleActions(), &clean, e->buttons(), e->modifiers(), e->type());
    QLineEdit::dropEvent(&cleaned);
    e->setDropAction(cleaned.dropAction());
    e->setAccepted(cleaned.isAccepted());
}

void EntryFieldWidget::contextMenuEvent(QContextMenuEvent* e) {
    QMenu* menu = createStandardContextMenu();
    for (QAction* a : menu->actions()) {
        if (a->objectName() != QLatin1String("edit-paste")) continue;
        disconnect(a, &QAction::triggered, nullptr, nullptr);
        connect(a, &QAction::triggered, this, &EntryFieldWidget::PasteInCapitals);
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(e->globalPos());
}

void EntryFieldWidget::TextEdited() {
    if (!shell_.desktop().session.MainWindowExists()) return;
    const QString now = text();
    const int caret = CharIndexOf(now, cursorPosition());
    shell_.Dispatch([&](Desktop& d) {
        EntryField& f = d.session.MainWindow().*field_;
        f.SelStart = caret;
        SetFieldText(d, f, FromQ(now));
    });
}

void EntryFieldWidget::Mirror(const EntryField& f) {
    const QSignalBlocker block(this);
    setEnabled(f.Enabled);
    const QString wanted = ToQ(f.Text());
    // The limit stops typing; it never cuts what the field holds or is given.
    const int limit = f.LimitText > 0 ? std::max<int>(f.LimitText, int(wanted.size())) : 32767;
    if (maxLength() != limit) {
        // A new limit resets the field's selection and caret; the user's stay as they were,
        // so that a key typed over a selection still replaces it.
        const int start = selectionStart();
        const int length = int(selectedText().size());
        const int caret = cursorPosition();
        setMaxLength(limit);
        if (length == 0)
            setCursorPosition(caret);
        else if (caret == start)
            setSelection(start + length, -length);
        else
            setSelection(start, length);
    }
    if (text() != wanted) {
        // Through the field's editing, so that undo steps back over the change as well.
        selectAll();
        insert(wanted);
        setCursorPosition(Utf16PositionOf(wanted, int(f.SelStart)));
    }
}

void EntryFieldWidget::focusOutEvent(QFocusEvent* e) {
    QLineEdit::focusOutEvent(e);
    // Leaving the field, not the window: a dialog or a menu in front does not count.
    const Qt::FocusReason r = e->reason();
    const bool left = r == Qt::TabFocusReason || r == Qt::BacktabFocusReason || r == Qt::MouseFocusReason ||
                      r == Qt::OtherFocusReason || r == Qt::ShortcutFocusReason;
    if (!left || !shell_.desktop().session.MainWindowExists() || !isEnabled()) return;
    shell_.Dispatch([this](Desktop& d) {
        switch ((d.session.MainWindow().*field_).FieldKind()) {
            case EntryField::Kind::ReelName: EF_ReelName_LostFocus(d); break;
            case EntryField::Kind::SeqTitle: EF_SeqTitle_LostFocus(d); break;
            case EntryField::Kind::RenderedMovie: EF_RenderedMovie_LostFocus(d); break;
        }
    });
}

// ---- the window ----

MainWindowView::MainWindowView(AppShell& shell) : shell_(shell) {
    setObjectName("MainWindow");
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    surface_ = new Surface([this] { LayoutAnchored(); });
    surface_->setMinimumSize(kWidth, kHeight);
    surface_->setMaximumSize(32000, 32000);
    setCentralWidget(surface_);

    auto button = [&](const char* name, const char* caption, QRect rect, Anchor anchor, void (*handler)(Desktop&)) {
        auto* b = new QPushButton(QString::fromUtf8(caption), surface_);
        Add(b, name, rect, anchor);
        if (handler) connect(b, &QPushButton::clicked, this, [this, handler] { shell_.Dispatch(handler); });
        return b;
    };
    btnOpen_ = button("BtnOpenEDL", "Open EDL...", {20, 14, 120, 20}, Anchor::TopLeft, BtnOpenEDL_Action);
    btnSave_ = button("BtnSaveEDL", "Save EDL...", {152, 14, 120, 20}, Anchor::TopLeft, BtnSaveEDL_Action);
    btnResetAll_ = button("BtnResetAll", "Reset All", {771, 14, 120, 20}, Anchor::TopRight, nullptr);

    auto* canvas3 = new QLabel(surface_);
    canvas3->setPixmap(Picture(":/images/vornelt.svg", {32, 32}, devicePixelRatioF()));
    Add(canvas3, "Canvas3", {928, 14, 32, 32}, Anchor::TopRight);

    auto fieldLabel = [&](const char* name, std::string_view field, QRect rect) {
        auto* l = new QLabel(OptionCaption(field), surface_);
        l->setFont(ControlFont(kSmall));
        Add(l, name, rect);
    };
    fieldLabel("StaticText1", "EF_ReelName", {20, 54, 80, 14});
    fieldLabel("StaticText2", "EF_SeqTitle", {112, 54, 132, 14});
    fieldLabel("StaticText3", "EF_RenderedMovie", {388, 54, 132, 14});

    auto field = [&](const char* name, EntryField MainWindowState::*member, QRect rect, Qt::Alignment align) {
        auto* f = new EntryFieldWidget(shell_, member, surface_);
        f->setAlignment(align);
        Add(f, name, rect);
        fields_.push_back(f);
        return f;
    };
    auto* reel = field("EF_ReelName", &MainWindowState::EF_ReelName, {20, 72, 80, 22}, Qt::AlignHCenter);
    auto* title = field("EF_SeqTitle", &MainWindowState::EF_SeqTitle, {112, 72, 264, 22}, Qt::AlignLeft);
    auto* movie = field("EF_RenderedMovie", &MainWindowState::EF_RenderedMovie, {388, 72, 180, 22}, Qt::AlignLeft);
    btnSelectMovie_ =
        button("BtnSelectMovie", "Select Movie...", {580, 73, 140, 20}, Anchor::TopLeft, BtnSelectMovie_Action);

    editField1_ = new ListView(surface_);
    Add(editField1_, "EditField1", {20, 106, 700, 514}, Anchor::All);
    editField1_->viewport()->setAcceptDrops(true);
    editField1_->viewport()->installEventFilter(this);
    // What the user types into the area after a drop is the control's text, not the list's:
    // the next list replaces it, and a save writes the list.
    connect(editField1_, &ListView::textEdited, this, [this] {
        if (!session().MainWindowExists()) return;
        shownText_ = editField1_->text();
        shownIsRendered_ = false;
        session().MainWindow().EditField1.Text = shownText_;
    });

    // The cover of the text area until the first list is in.
    canvas2_ = new QWidget(surface_);
    canvas2_->setAutoFillBackground(true);
    canvas2_->setAcceptDrops(true);
    canvas2_->installEventFilter(this);
    Add(canvas2_, "Canvas2", {10, 100, 720, 528}, Anchor::All);
    canvas1_ = new QLabel(canvas2_);
    canvas1_->setObjectName("Canvas1");
    canvas1_->setPixmap(Picture(":/images/welcome.svg", {460, 371}, devicePixelRatioF()));
    canvas1_->setGeometry(140 - 10, 179 - 100, 460, 371);

    QGroupBox* general = Box("GroupBox1", "General", {732, 54, 228, 90}, Anchor::TopRight);
    BoxLabel(general, "StaticText4", "EDL Format:", {742, 80, 70, 14}, Qt::AlignRight);
    BoxLabel(general, "StaticText5", "Frame-Rate:", {742, 100, 70, 14}, Qt::AlignRight);
    BoxLabel(general, "StaticText6", "FCM:", {742, 120, 70, 14}, Qt::AlignRight);
    stEdlFormat_ = BoxLabel(general, "ST_EdlFormat", "GVG", {820, 80, 100, 14}, Qt::AlignLeft);
    stFrameRate_ = BoxLabel(general, "ST_FrameRate", "59,94", {820, 100, 100, 14}, Qt::AlignLeft);
    stFcm_ = BoxLabel(general, "ST_FCM", "Drop Frame", {820, 120, 100, 14}, Qt::AlignLeft);

    QGroupBox* edl = Box("GBox_EDL", "EDL", {732, 156, 228, 60}, Anchor::TopRight);
    Check(edl, "Chb_Mirror", nullptr, {742, 182, 54, 20}, &MainWindowState::Chb_Mirror, Chb_Mirror_Action);
    QCheckBox* fix = Check(edl, "Chb_FixKeyDuration", "Fix Key Duration", {806, 182, 114, 20},
                           &MainWindowState::Chb_FixKeyDuration, Chb_FixKeyDuration_Action);
    fix->setToolTip(QString::fromUtf8(
        "Bei EDLs aus FCP sind Src-IN und Src-OUT, bzw. Rec-IN und Rec-OUT auf VideoSpur V2 immer identisch.\n"
        "Src-OUT und Rec-OUT werden werden auf reale Werte eingestellt."));

    QGroupBox* video = Box("GBox_Video", "Video", {732, 228, 228, 60}, Anchor::TopRight);
    Check(video, "Chb_V1", "V1", {742, 254, 40, 20}, &MainWindowState::Chb_V1, nullptr);
    Check(video, "Chb_V2", nullptr, {794, 254, 65, 20}, &MainWindowState::Chb_V2, Chb_V2_Action);

    QGroupBox* audio1 = Box("GBox_Audio1", "Audio", {732, 300, 228, 60}, Anchor::TopRight);
    Check(audio1, "Chb_A1234", nullptr, {742, 326, 70, 20}, &MainWindowState::Chb_A1234, Chb_A1234_Action);

    // Outside the right edge, and tied to it: never seen.
    QGroupBox* audio = Box("GBox_Audio", "Audio", {988, 300, 200, 60}, Anchor::TopRight);
    Check(audio, "Chb_A1", "A1", {998, 326, 40, 20}, &MainWindowState::Chb_A1, Chb_A1_Action);
    Check(audio, "Chb_A2", "A2", {1044, 326, 40, 20}, &MainWindowState::Chb_A2, Chb_A2_Action);
    Check(audio, "Chb_A3", "A3", {1090, 326, 40, 20}, &MainWindowState::Chb_A3, Chb_A3_Action);
    Check(audio, "Chb_A4", "A4", {1136, 326, 40, 20}, &MainWindowState::Chb_A4, Chb_A4_Action);

    QGroupBox* trans = Box("GBox_Trans", "Transitions & Effects", {732, 372, 228, 146}, Anchor::TopRight);
    Check(trans, "Chb_RemoveFreezeFrame", nullptr, {742, 396, 178, 20}, &MainWindowState::Chb_RemoveFreezeFrame,
          Chb_RemoveFreezeFrame_Action);
    Check(trans, "Chb_RemoveSpeedChanges", nullptr, {742, 426, 178, 20}, &MainWindowState::Chb_RemoveSpeedChanges,
          Chb_RemoveSpeedChanges_Action);
    Check(trans, "Chb_TransToDissolve", nullptr, {742, 456, 178, 20}, &MainWindowState::Chb_TransToDissolve,
          Chb_TransToDissolve_Action);
    Check(trans, "Chb_KeyToDissolve", nullptr, {742, 486, 209, 20}, &MainWindowState::Chb_KeyToDissolve,
          Chb_KeyToDissolve_Action);

    QGroupBox* comment = Box("GBox_Comment", "Comment Lines", {732, 530, 228, 90}, Anchor::TopRight);
    Check(comment, "Chb_ComntGenerateNew", nullptr, {742, 556, 178, 20}, &MainWindowState::Chb_ComntGenerateNew,
          Chb_ComntGenerateNew_Action);
    popupTransition_ = new QComboBox(comment);
    popupTransition_->setObjectName("PopupTransition");
    for (const Option& o : kOptions)
        if (o.control == "PopupTransition")
            for (std::string_view row : o.choiceCaptions) popupTransition_->addItem(ToQ(row));
    popupTransition_->setFont(ControlFont(kSmall));
    popupTransition_->setGeometry(742 - 732, 586 - 530, 209, 20);
    connect(popupTransition_, &QComboBox::activated, this, [this](int row) {
        // Picking the row that stands is no change: the list stays as it is, and unchanged.
        if (!session().MainWindowExists() || session().MainWindow().PopupTransition.ListIndex == row) return;
        session().MainWindow().PopupTransition.ListIndex = row;
        shell_.Dispatch(PopupTransition_Change);
    });
    Check(comment, "Chb_ComntTransition", "Transitions", {742, 616, 178, 20}, &MainWindowState::Chb_ComntTransition,
          Chb_ComntTransition_Action);
    Check(comment, "Chb_ComntClipNames", "Clip-Names", {742, 646, 178, 20}, &MainWindowState::Chb_ComntClipNames,
          Chb_ComntClipNames_Action);
    Check(comment, "Chb_ComntOther", "Other", {742, 676, 178, 20}, &MainWindowState::Chb_ComntOther,
          Chb_ComntOther_Action);

    // The keyboard goes through these six first, then through the options from the top of
    // the right column (a disabled one is passed over); the two other buttons take the focus
    // by a click only.
    std::vector<QWidget*> order{btnOpen_, btnSave_, reel, title, movie, editField1_};
    for (const CheckBinding& c : checks_) {
        order.push_back(c.box);
        if (c.box->objectName() == QLatin1String("Chb_ComntGenerateNew")) order.push_back(popupTransition_);
    }
    for (QWidget* w : order) w->setFocusPolicy(Qt::StrongFocus);
    for (size_t k = 1; k < order.size(); ++k) setTabOrder(order[k - 1], order[k]);
    btnSelectMovie_->setFocusPolicy(Qt::ClickFocus);
    btnResetAll_->setFocusPolicy(Qt::ClickFocus);

    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FocusMoved(now); });

#if !defined(Q_OS_MACOS)
    shell_.BuildMenuBar(menuBar());
#endif
    resize(kWidth, kHeight + (menuBar()->isVisible() ? menuBar()->sizeHint().height() : 0));
    LayoutAnchored();
}

MainWindowView::~MainWindowView() {
    // The controls go after this; the focus that leaves them is no longer the window's to follow.
    disconnect(qApp, &QApplication::focusChanged, this, nullptr);
}

QWidget* MainWindowView::Add(QWidget* w, const char* name, QRect rect, Anchor anchor) {
    w->setObjectName(QString::fromUtf8(name));
    w->setGeometry(rect);
    placed_.push_back({w, rect, anchor});
    return w;
}

QGroupBox* MainWindowView::Box(const char* name, const char* caption, QRect rect, Anchor anchor) {
    auto* box = new QGroupBox(QString(caption).replace("&", "&&"), surface_);
    Add(box, name, rect, anchor);
    return box;
}

QCheckBox* MainWindowView::Check(QGroupBox* box, const char* name, const char* caption, QRect windowRect,
                                 CheckBox MainWindowState::*member, void (*handler)(Desktop&)) {
    // An option's box has the caption of the options table.
    auto* c = new QCheckBox(caption ? QString::fromUtf8(caption) : OptionCaption(name), box);
    c->setObjectName(QString::fromUtf8(name));
    c->setFont(ControlFont(kSmall));
    c->setGeometry(windowRect.translated(-box->geometry().topLeft()));
    checks_.push_back({c, member});
    connect(c, &QCheckBox::clicked, this, [this, member, handler](bool checked) {
        if (!session().MainWindowExists()) return;
        (session().MainWindow().*member).Value = checked;
        // A box without a handler only takes its value.
        if (handler)
            shell_.Dispatch(handler);
        else
            shell_.Sync();
    });
    return c;
}

QLabel* MainWindowView::BoxLabel(QGroupBox* box, const char* name, const char* text, QRect windowRect,
                                 Qt::Alignment align) {
    auto* l = new QLabel(QString::fromUtf8(text), box);
    l->setObjectName(QString::fromUtf8(name));
    l->setFont(ControlFont(kSmall));
    l->setAlignment(align | Qt::AlignVCenter);
    l->setGeometry(windowRect.translated(-box->geometry().topLeft()));
    return l;
}

QWidget* MainWindowView::Control(const QString& name) const { return findChild<QWidget*>(name); }

Session& MainWindowView::session() const { return shell_.desktop().session; }

void MainWindowView::LayoutAnchored() {
    const int dw = surface_->width() - kWidth;
    const int dh = surface_->height() - kHeight;
    for (const Placed& p : placed_) {
        switch (p.anchor) {
            case Anchor::TopLeft: break;
            case Anchor::TopRight: p.widget->move(p.rect.x() + dw, p.rect.y()); break;
            case Anchor::All: p.widget->setGeometry(p.rect.adjusted(0, 0, dw, dh)); break;
        }
    }
}

void MainWindowView::Mirror() {
    if (!session().MainWindowExists()) return;
    MainWindowState& w = session().MainWindow();
    QString title = ToQ(w.Title);
    title.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
    setWindowTitle(title + QLatin1String("[*]"));

    auto mirrorButton = [](QPushButton* b, const PushButton& s) {
        b->setEnabled(s.Enabled);
        b->setVisible(s.Visible);
    };
    mirrorButton(btnOpen_, w.BtnOpenEDL);
    mirrorButton(btnSave_, w.BtnSaveEDL);
    mirrorButton(btnResetAll_, w.BtnResetAll);
    mirrorButton(btnSelectMovie_, w.BtnSelectMovie);

    for (const CheckBinding& c : checks_) {
        const CheckBox& s = w.*c.member;
        const QSignalBlocker block(c.box);
        c.box->setChecked(s.Value);
        c.box->setEnabled(s.Enabled);
        c.box->setVisible(s.Visible);
    }
    {
        const QSignalBlocker block(popupTransition_);
        if (w.PopupTransition.ListIndex >= 0 && w.PopupTransition.ListIndex < popupTransition_->count())
            popupTransition_->setCurrentIndex(w.PopupTransition.ListIndex);
        popupTransition_->setEnabled(w.PopupTransition.Enabled);
        popupTransition_->setVisible(w.PopupTransition.Visible);
    }
    for (EntryFieldWidget* f : fields_) {
        if (f->objectName() == QLatin1String("EF_ReelName")) f->Mirror(w.EF_ReelName);
        if (f->objectName() == QLatin1String("EF_SeqTitle")) f->Mirror(w.EF_SeqTitle);
        if (f->objectName() == QLatin1String("EF_RenderedMovie")) f->Mirror(w.EF_RenderedMovie);
    }
    stEdlFormat_->setText(ToQ(w.ST_EdlFormat.Text));
    stFrameRate_->setText(ToQ(w.ST_FrameRate.Text));
    stFcm_->setText(ToQ(w.ST_FCM.Text));

    canvas2_->setEnabled(w.Canvas2.Enabled);
    canvas2_->setVisible(w.Canvas2.Visible);
    canvas1_->setEnabled(w.Canvas1.Enabled);
    canvas1_->setVisible(w.Canvas1.Visible);

    editField1_->setEnabled(w.EditField1.Enabled);
    editField1_->setReadOnly(w.EditField1.ReadOnly);
    if (w.EditField1.Text != shownText_) {
        std::shared_ptr<const std::string> previous = std::move(shownText_);
        const bool previousWasRendered = shownIsRendered_;
        shownText_ = w.EditField1.Text;
        Document& m = session().document;
        shownIsRendered_ = shownText_ && shownText_.get() == m.renderedList.get();
        editField1_->setText(shownText_);
        // The list shown until now was the writer's: now that nothing holds it any longer, the
        // next rendering writes into its memory again, as it does where no window shows the
        // list, instead of into fresh memory that the system must first hand over page by page.
        if (previousWasRendered && previous.use_count() == 1 && !m.renderSpare)
            m.renderSpare = std::const_pointer_cast<std::string>(std::move(previous));
    }

    if (w.Cursor != shownCursor_) {
        shownCursor_ = w.Cursor;
        // The window's pointer shows over its text controls too.
        const Qt::CursorShape shape = CursorShapeOf(w.Cursor);
        setCursor(shape);
        const Qt::CursorShape text = w.Cursor == MouseCursor::StandardPointer ? Qt::IBeamCursor : shape;
        editField1_->viewport()->setCursor(text);
        for (EntryFieldWidget* f : fields_) f->setCursor(text);
    }
    ApplyFocus(w.Focus);
}

void MainWindowView::ApplyFocus(const std::string& name) {
    // Only a move that a handler asked for: the record may lag behind a move under way.
    if (name == appliedFocus_) return;
    appliedFocus_ = name;
    if (name.empty()) return;
    QWidget* now = QApplication::focusWidget();
    if (now && now->objectName() == ToQ(name) && isAncestorOf(now)) return;
    QWidget* target = Control(ToQ(name));
    if (target && target->isEnabled()) target->setFocus(Qt::OtherFocusReason);
}

void MainWindowView::FocusMoved(QWidget* now) {
    if (!now || !session().MainWindowExists() || !isAncestorOf(now)) return;
    // The named control that holds the focus: the text area's scroll parts count as it.
    for (QWidget* w = now; w && w != this; w = w->parentWidget()) {
        if (w == editField1_ || w->objectName().startsWith("EF_") || w->objectName().startsWith("Btn") ||
            w->objectName().startsWith("Chb_") || w->objectName() == QLatin1String("PopupTransition")) {
            appliedFocus_ = FromQ(w->objectName());
            session().MainWindow().Focus = appliedFocus_;
            return;
        }
    }
}

bool MainWindowView::eventFilter(QObject* watched, QEvent* event) {
    // Drops on the text area, and on the cover in front of it before the first list.
    switch (event->type()) {
        case QEvent::DragEnter: {
            auto* e = static_cast<QDragEnterEvent*>(event);
            if (!DroppableFile(e->mimeData()) || !session().MainWindowExists() || !TakeAsCopy(e)) {
                e->ignore();
                return true;
            }
            shell_.Dispatch(EditField1_DragEnter);
            return true;
        }
        case QEvent::DragMove: TakeAsCopy(static_cast<QDragMoveEvent*>(event)); return true;
        case QEvent::DragLeave:
            if (session().MainWindowExists()) shell_.Dispatch(EditField1_DragExit);
            return true;
        case QEvent::Drop: {
            auto* e = static_cast<QDropEvent*>(event);
            const std::optional<QString> file = DroppableFile(e->mimeData());
            if (!TakeAsCopy(e)) return true;
            // Only the first file counts; the others are dropped without a word.
            FolderItemRef item;
            if (file) item = FolderItem(FromQ(*file));
            shell_.Dispatch([item](Desktop& d) { EditField1_DropObject(d, item); });
            return true;
        }
        default: break;
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindowView::CloseForGood() {
    closingForGood_ = true;
    hide();
}

void MainWindowView::closeEvent(QCloseEvent* event) {
    if (closingForGood_ || !session().MainWindowExists()) {
        event->accept();
        return;
    }
    // No question in the middle of a load.
    if (shell_.Busy()) {
        event->ignore();
        return;
    }
    bool stop = true;
    shell_.Dispatch([&](Desktop& d) {
        stop = MainWindow_Event_CancelClose(d, false);
        if (!stop) d.session.CloseMainWindow();
    });
    if (stop) {
        event->ignore();
        return;
    }
    event->accept();
    if (shell_.quitWhenMainWindowCloses) QTimer::singleShot(0, qApp, &QCoreApplication::quit);
}

}  // namespace vornelt::qt
