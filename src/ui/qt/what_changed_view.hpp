#pragma once
// "What Changed": the report of the loaded list beside the main window. It follows every
// new rendering of the list, lists the items grouped by kind with their counts, and shows
// the lines of the selected item's event as read and as written.

#include <QAbstractItemModel>
#include <QHash>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>

#include "ui/what_changed.hpp"

class QLabel;
class QPlainTextEdit;
class QTreeView;

namespace vornelt::qt {

class AppShell;

// Kinds as parents, items as their children; the text of an item is made when it is shown.
class ReportModel : public QAbstractItemModel {
    Q_OBJECT
public:
    explicit ReportModel(QObject* parent = nullptr) : QAbstractItemModel(parent) {}
    void setView(ReportView view);
    // While a handler runs, the routines rewrite the document's report under the entries:
    // the model then shows the texts it has shown, until the next view.
    void setFrozen(std::function<bool()> frozen) { frozen_ = std::move(frozen); }
    const ReportView& view() const { return view_; }
    // The entry behind an index; null for a kind.
    const ReportEntry* entry(const QModelIndex& index) const;
    // Its line in the new list (0: not in it), counted when first asked for.
    int32_t lineWritten(const ReportEntry& entry) const { return lines_.Of(entry); }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override;

private:
    ReportView view_;
    std::vector<WhatChangedGroup> groups_;
    mutable WrittenLines lines_;
    std::function<bool()> frozen_;
    mutable QHash<quint64, QString> shown_;  // by group and row
};

class WhatChangedView : public QWidget {
    Q_OBJECT
public:
    explicit WhatChangedView(AppShell& shell);
    // Brings the report in line with the document, if the list was rendered anew.
    void Refresh();
    QTreeView* tree() const { return tree_; }
    ReportModel* model() const { return model_; }
    QPlainTextEdit* asRead() const { return asRead_; }
    QPlainTextEdit* asWritten() const { return asWritten_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Selected(const QModelIndex& index);

    AppShell& shell_;
    ReportModel* model_;
    QTreeView* tree_;
    QLabel* summary_;
    QPlainTextEdit* asRead_;
    QPlainTextEdit* asWritten_;
    // The list the report was made for; held weakly, so that its memory goes back to the
    // writer once the main window shows the next one.
    std::weak_ptr<const std::string> shownList_;
};

}  // namespace vornelt::qt
