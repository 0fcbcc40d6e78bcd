#pragma once

#include "platform/Bindings.h"
#include "platform/Controls.h"

#include <QAbstractListModel>
#include <QListView>

namespace orvantine {

/// The lines of a list box that grows by thousands while it is looked at: each has its check mark, and only those that
/// came are told to the view.
class LineListModel final : public QAbstractListModel
{
public:
    explicit LineListModel(ListBox& control);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    void follow();

    ListBox& m_control;
    QStringList m_lines;
    Bindings m_bindings;
};

class LineList final : public QListView
{
public:
    LineList(ListBox& control, QWidget* parent);

protected:
    /// The space bar turns the marks of all selected lines.
    void keyPressEvent(QKeyEvent* event) override;

private:
    LineListModel m_model;
};

} // namespace orvantine
