#include "ui/qt/what_changed_view.hpp"

#include <QFont>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

#include "writer/writer.hpp"

#include "ui/qt/app_shell.hpp"
#include "ui/qt/list_view.hpp"

namespace vornelt::qt {

namespace {

constexpr int kMostLines = 30;
// The texts of item rows kept for showing while a handler runs: those in sight, and more.
constexpr qsizetype kMostShown = 4096;

QString Where(const ReportEntry& e, int32_t lineWritten) {
    QString where = e.row >= 0 ? QStringLiteral("line %1").arg(e.row + 1) : QStringLiteral("list");
    if (lineWritten > 0) where += QStringLiteral(" \u2192 %1").arg(lineWritten);
    return where;
}

}  // namespace

void ReportModel::setView(ReportView view) {
    beginResetModel();
    view_ = std::move(view);
    lines_ = view_.document ? WrittenLines(*view_.document) : WrittenLines();
    shown_.clear();
    // The entries stand kind after kind, in the order of the kinds.
    groups_.clear();
    size_t first = 0;
    for (size_t k = 0; k < kChangeKinds; ++k) {
        if (view_.counts[k] == 0) continue;
        groups_.push_back({ChangeKind(k), first, view_.counts[k]});
        first += size_t(view_.counts[k]);
    }
    endResetModel();
}

const ReportEntry* ReportModel::entry(const QModelIndex& index) const {
    if (!index.isValid() || index.internalId() == 0) return nullptr;
    const Group& g = groups_[size_t(index.internalId() - 1)];
    return &view_.entries[g.first + size_t(index.row())];
}

QModelIndex ReportModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0) return {};
    if (!parent.isValid()) return row < int(groups_.size()) ? createIndex(row, 0, quintptr(0)) : QModelIndex();
    if (parent.internalId() != 0 || row >= groups_[size_t(parent.row())].count) return {};
    return createIndex(row, 0, quintptr(parent.row() + 1));
}

QModelIndex ReportModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || child.internalId() == 0) return {};
    return createIndex(int(child.internalId() - 1), 0, quintptr(0));
}

int ReportModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return int(groups_.size());
    if (parent.internalId() != 0) return 0;
    return groups_[size_t(parent.row())].count;
}

QVariant ReportModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (index.internalId() == 0) {
        const Group& g = groups_[size_t(index.row())];
        if (role == Qt::DisplayRole) {
            QString text = QStringLiteral("%1 (%2)").arg(QString::fromUtf8(KindHeading(g.kind))).arg(g.count);
            if (g.kind == ChangeKind::ClipChain && view_.oneLineChains > 0)
                text += QStringLiteral(", and %1 of one line").arg(view_.oneLineChains);
            if (KindSeverity(g.kind) == Severity::Warning) text = QStringLiteral("\u26A0 ") + text;
            return text;
        }
        if (role == Qt::FontRole) {
            QFont f;
            f.setBold(true);
            return f;
        }
        return {};
    }
    if (role != Qt::DisplayRole) return {};
    const quint64 key = (quint64(index.internalId()) << 32) | quint64(index.row());
    if (frozen_ && frozen_()) return shown_.value(key);
    if (auto it = shown_.constFind(key); it != shown_.constEnd()) return *it;
    const ReportEntry& e = *entry(index);
    const QString text =
        Where(e, lines_.Of(e)) + QStringLiteral("   ") + QString::fromStdString(EntryText(e, *view_.document));
    if (shown_.size() >= kMostShown) shown_.clear();
    shown_.insert(key, text);
    return text;
}

WhatChangedView::WhatChangedView(AppShell& shell)
    : QWidget(nullptr, Qt::Window),
      shell_(shell),
      model_(new ReportModel(this)),
      tree_(new QTreeView),
      summary_(new QLabel),
      asRead_(new QPlainTextEdit),
      asWritten_(new QPlainTextEdit) {
    setObjectName("WhatChangedWindow");
    setWindowTitle(QStringLiteral("What Changed"));
    setAttribute(Qt::WA_DeleteOnClose);
    tree_->setObjectName("WhatChangedItems");
    model_->setFrozen([this] { return shell_.Busy(); });
    tree_->setModel(model_);
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);  // a hundred thousand rows scroll without measuring each
    tree_->setTextElideMode(Qt::ElideRight);
    for (QPlainTextEdit* side : {asRead_, asWritten_}) {
        side->setReadOnly(true);
        side->setLineWrapMode(QPlainTextEdit::NoWrap);
        side->setFont(ListFont());
    }
    asRead_->setObjectName("WhatChangedAsRead");
    asWritten_->setObjectName("WhatChangedAsWritten");

    auto* sides = new QWidget;
    auto* sidesLayout = new QHBoxLayout(sides);
    sidesLayout->setContentsMargins(0, 0, 0, 0);
    for (auto [caption, side] : {std::pair{"As read", asRead_}, {"As written", asWritten_}}) {
        auto* column = new QVBoxLayout;
        column->addWidget(new QLabel(QString::fromUtf8(caption)));
        column->addWidget(side);
        sidesLayout->addLayout(column);
    }
    auto* split = new QSplitter(Qt::Vertical);
    split->addWidget(tree_);
    split->addWidget(sides);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(summary_);
    layout->addWidget(split);
    resize(760, 560);

    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& now) { Selected(now); });
    Refresh();
}

void WhatChangedView::Refresh() {
    // A running handler is still changing the report: its end brings the windows in line.
    if (shell_.Busy()) return;
    const Document& m = shell_.desktop().session.document;
    if (shownList_.lock() == m.finalCMXString && model_->rowCount() > 0) return;
    shownList_ = m.finalCMXString;
    // The lines in the new list are counted for the items shown only.
    model_->setView(ViewReport(m, ReportLines::WhenShown));
    int changes = 0, warnings = 0;
    for (size_t k = 0; k < kChangeKinds; ++k)
        (KindSeverity(ChangeKind(k)) == Severity::Change ? changes : warnings) += model_->view().counts[k];
    summary_->setText(m.dbCreated ? QStringLiteral("%1: %2 changes, %3 warnings")
                                        .arg(QString::fromStdString(m.myAbsDateiName))
                                        .arg(changes)
                                        .arg(warnings)
                                  : QStringLiteral("No list is loaded."));
    asRead_->clear();
    asWritten_->clear();
}

void WhatChangedView::keyPressEvent(QKeyEvent* event) {
    // Escape closes the window, as it closes a dialog.
    if (event->matches(QKeySequence::Cancel)) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void WhatChangedView::Selected(const QModelIndex& index) {
    const ReportEntry* e = model_->entry(index);
    asRead_->clear();
    asWritten_->clear();
    if (!e || e->row < 0) return;
    const Document& m = shell_.desktop().session.document;
    const int32_t row = e->row;
    const auto event = [&](int32_t r) {
        return size_t(r) < m.readOrigEventNumberInt.size() ? m.readOrigEventNumberInt[size_t(r)] : -1;
    };
    // The rows of the event, with the notes that follow it.
    int32_t a = row, b = row;
    const int32_t last = int32_t(m.readOrigCompleteLine.size()) - 1;
    if (e->event >= 0) {
        while (a > 0 && event(a - 1) == e->event && row - a < kMostLines) --a;
        while (b < last && (event(b + 1) == e->event || event(b + 1) < 0) && b - a < kMostLines) ++b;
    }
    QString read;
    for (int32_t r = a; r <= b; ++r)
        read += QStringLiteral("%1  ").arg(r + 1, 5) + QString::fromUtf8(m.readOrigCompleteLine.Get(r)) + '\n';
    asRead_->setPlainText(read);

    // The lines of those rows in the new list, with the comment lines that follow them, as the
    // plan of the list has them.
    const auto [from, to] = m.plan.LinesOf(uint32_t(a), uint32_t(b));
    if (from == to) {
        asWritten_->setPlainText(QStringLiteral("(not in the new list)"));
        return;
    }
    const std::string written = PlannedText(m, from, to - from > kMostLines ? from + kMostLines : to);
    QString text;
    int line = int(from->line);
    int shown = 0;
    for (size_t p = 0; p < written.size() && shown < kMostLines; ++shown) {
        size_t cr = written.find('\r', p);
        if (cr == std::string::npos) cr = written.size();
        text += QStringLiteral("%1  ").arg(line++, 5) + QString::fromUtf8(written.data() + p, qsizetype(cr - p)) + '\n';
        p = cr + 1;
    }
    asWritten_->setPlainText(text);

    // The main list scrolls to the item's line, or to the first line of its rows.
    if (MainWindowView* main = shell_.Main()) {
        const PlannedLine* own = m.plan.EventLineOf(uint32_t(row));
        main->EditField1()->revealLine(int(own ? own->line : from->line));
    }
}

}  // namespace vornelt::qt
