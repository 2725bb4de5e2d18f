#pragma once
// What the tests of the lists share: rows that are counted and a log of what the list tells.

#include "shells/linux/views/kit/menu_list.h"
#include "shells/linux/views/kit/selection_list.h"
#include "tests/linux/views/events.h"

#include <QAccessible>
#include <QApplication>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace kestrel::linux_shell {

class CountedRow : public ListRow {
  public:
    using ListRow::ListRow;
    int boundTo = -1;
};

struct CountedRows : RowSource {
    int rows = 0;
    std::optional<int> height = 34;
    int made = 0;
    int bound = 0;
    mutable int heightsAsked = 0;
    mutable int titlesAsked = 0;

    int count() const override { return rows; }
    std::optional<int> uniformHeight() const override { return height; }
    std::vector<int> heights(int /*width*/) const override {
        ++heightsAsked;
        std::vector<int> heights;
        heights.reserve(static_cast<std::size_t>(rows));
        for (int row = 0; row < rows; ++row)
            heights.push_back(30 + row % 3 * 10);
        return heights;
    }
    QString titleOf(int row) const override {
        ++titlesAsked;
        return QStringLiteral("Row %1").arg(row);
    }
    ListRow* makeRow(QWidget* parent) override {
        ++made;
        return new CountedRow(parent);
    }
    void bindRow(ListRow& row, int index) override {
        ++bound;
        static_cast<CountedRow&>(row).boundTo = index;
    }
};

template <class List>
class ListFixture : public testing::Test {
  protected:
    List& makeList(int rows, QSize size = QSize(240, 320)) {
        source.rows = rows;
        list = std::make_unique<List>(source, QMargins(0, 6, 0, 6));
        QObject::connect(list.get(), &List::activated,
                         [this](int row) { log << "activated" << row; });
        QObject::connect(list.get(), &List::typed,
                         [this](const QString& text) { log << "typed" << text; });
        listen(*list);
        list->resize(size);
        list->move(300, 300); // away from where the pointer rests
        list->show();
        list->activateWindow();
        list->setFocus();
        QApplication::processEvents();
        return *list;
    }

    /// Logs the signals that only this kind of list has.
    void listen(MenuList& menu) {
        QObject::connect(&menu, &MenuList::pointerEntered,
                         [this](int row) { log << "entered" << row; });
        QObject::connect(&menu, &MenuList::pointerLeft, [this](int row) { log << "left" << row; });
        QObject::connect(&menu, &MenuList::stepRequested,
                         [this](RowStep step) { log << "step" << static_cast<int>(step); });
    }
    void listen(SelectionList& selection) {
        QObject::connect(&selection, &SelectionList::rowPicked,
                         [this](int row) { log << "picked" << row; });
        QObject::connect(&selection, &SelectionList::moveRequested,
                         [this](int row, int to) { log << "move" << row << to; });
        QObject::connect(&selection, &SelectionList::stepRequested, [this](RowStep step, int page) {
            log << "step" << static_cast<int>(step) << page;
        });
        QObject::connect(&selection, &SelectionList::moveByOneRequested,
                         [this](int row, RowDirection direction) {
                             log << "moveByOne" << row << static_cast<int>(direction);
                         });
        QObject::connect(&selection, &SelectionList::moveCurrentRequested,
                         [this](RowDirection direction) {
                             log << "moveCurrent" << static_cast<int>(direction);
                         });
        QObject::connect(&selection, &SelectionList::deleteCurrentRequested,
                         [this] { log << "delete"; });
    }

    /// What a screen reader can ask of a row.
    QStringList actionsOf(int row) const {
        QAccessibleActionInterface* const actions = actionInterfaceOf(row);
        return actions == nullptr ? QStringList() : actions->actionNames();
    }
    void doAction(int row, const QString& action) const {
        QAccessibleActionInterface* const actions = actionInterfaceOf(row);
        ASSERT_NE(actions, nullptr) << row;
        actions->doAction(action);
    }
    QAccessibleActionInterface* actionInterfaceOf(int row) const {
        QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(list.get());
        QAccessibleInterface* const child = interface == nullptr ? nullptr : interface->child(row);
        return child == nullptr ? nullptr : child->actionInterface();
    }

    /// The middle of a row that is in sight, in the viewport.
    QPoint middleOf(int row) const { return list->rowRect(row).center(); }

    CountedRows source;
    std::unique_ptr<List> list;
    EventLog log;
};

} // namespace kestrel::linux_shell
