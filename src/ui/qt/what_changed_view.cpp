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

#include "vornelt/processor.hpp"
#include "writer/writer.hpp"

#include "ui/qt/app_shell.hpp"
#include "ui/qt/list_view.hpp"

namespace vornelt::qt {

namespace {

// The texts of item rows kept for showing while a handler runs: those in sight, and more.
constexpr qsizetype kMostShown = 4096;

}  // namespace

void ReportModel::setView(ReportView view) {
    beginResetModel();
    view_ = std::move(view);
    lines_ = view_.document ? WrittenLines(*view_.document) : WrittenLines();
    shown_.clear();
    // The entries stand kind after kind, in the order of the kinds.
    groups_ = WhatChangedGroups(view_);
    endResetModel();
}

const ReportEntry* ReportModel::entry(const QModelIndex& index) const {
    if (!index.isValid() || index.internalId() == 0) return nullptr;
    const WhatChangedGroup& g = groups_[size_t(index.internalId() - 1)];
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
        if (role == Qt::DisplayRole)
            return QString::fromStdString(WhatChangedHeading(view_, groups_[size_t(index.row())]));
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
    const QString text = QString::fromStdString(WhatChangedItemText(e, lines_.Of(e), *view_.document));
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
    ClearUpperVectorHalves();
    // The lines in the new list are counted for the items shown only.
    model_->setView(ViewReport(m, ReportLines::WhenShown));
    summary_->setText(QString::fromStdString(WhatChangedSummary(model_->view(), m)));
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
    const WhatChangedLines lines = EventLines(*e, m);
    asRead_->setPlainText(QString::fromStdString(lines.asRead));
    asWritten_->setPlainText(QString::fromStdString(lines.asWritten));
    // The main list scrolls to the item's line.
    if (MainWindowView* main = shell_.Main(); main && lines.listLine > 0)
        main->EditField1()->revealLine(lines.listLine);
}

}  // namespace vornelt::qt
