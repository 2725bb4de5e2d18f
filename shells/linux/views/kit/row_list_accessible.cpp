#include "shells/linux/views/kit/row_list_accessible.h"

#include "shells/linux/views/kit/row_list.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/accessible_texts.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeySequence>
#include <QPointer>

#include <unordered_map>

namespace kestrel::linux_shell {

namespace {

QAccessible::State stateOf(const RowList& list, int row) {
    QAccessible::State state;
    const bool current = row == list.currentRow();
    state.focusable = true;
    state.focused = current && list.hasFocus();
    state.selectable = true;
    state.selected = current;
    state.offscreen = list.realisedRow(row) == nullptr;
    state.disabled = !list.isEnabled();
    return state;
}

const QString moveUpAction = QStringLiteral("MoveUp");
const QString moveDownAction = QStringLiteral("MoveDown");

QStringList rowActions(const RowList& list) {
    if (!list.isEnabled()) {
        return {};
    }
    QStringList actions{QAccessibleActionInterface::pressAction(),
                        QAccessibleActionInterface::setFocusAction()};
    if (list.options().kind == RowList::Kind::selection) {
        actions << QAccessibleActionInterface::showMenuAction() << moveUpAction << moveDownAction;
    }
    return actions;
}

/// A dragging hand's way to reorder is closed to a screen reader, and its keys may not be free.
void moveRow(RowList& list, int row, const QString& action) {
    const int last = list.source().count() - 1;
    if (action == moveUpAction && row > 0) {
        Q_EMIT list.moveRequested(row, row - 1);
    } else if (action == moveDownAction && row < last) {
        Q_EMIT list.moveRequested(row, row + 2);
    }
}

void doRowAction(RowList& list, int row, const QString& action) {
    if (!rowActions(list).contains(action)) {
        return;
    }
    list.ensureVisible(row);
    if (action == QAccessibleActionInterface::pressAction()) {
        list.pressRow(row);
    } else if (action == QAccessibleActionInterface::setFocusAction()) {
        list.setFocus(Qt::OtherFocusReason);
        list.setCurrentRow(row);
    } else if (action == QAccessibleActionInterface::showMenuAction()) {
        const QPoint center = list.rowRect(row).center();
        Q_EMIT list.contextMenuRequested(row, list.viewport()->mapToGlobal(center));
    } else {
        moveRow(list, row, action);
    }
}

/// What the framework has no name of its own for; empty for the rest.
QString nameOfRowAction(const QString& action) {
    if (action == moveUpAction) {
        return textFor(accessible_texts::moveRowUp);
    }
    return action == moveDownAction ? textFor(accessible_texts::moveRowDown) : QString();
}

QStringList keysOfRowAction(const QString& action) {
    if (action == moveUpAction) {
        return {QKeySequence(Qt::ALT | Qt::Key_Up).toString()};
    }
    return action == moveDownAction ? QStringList{QKeySequence(Qt::ALT | Qt::Key_Down).toString()}
                                    : QStringList();
}

RowList* listOf(const ListRow& row) {
    const QWidget* viewport = row.parentWidget();
    return viewport == nullptr ? nullptr : qobject_cast<RowList*>(viewport->parentWidget());
}

/// A row that has a widget.
class RowInterface : public QAccessibleWidget {
  public:
    RowInterface(RowList& list, ListRow& row)
        : QAccessibleWidget(&row, QAccessible::ListItem), list_(list), row_(row) {}

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&list_);
    }

    QString text(QAccessible::Text which) const override {
        // The list may not have heard yet that the row has gone.
        const int row = row_.row();
        return which == QAccessible::Name && row >= 0 && row < list_.source().count()
                   ? list_.source().titleOf(row)
                   : QAccessibleWidget::text(which);
    }

    QAccessible::State state() const override {
        QAccessible::State state = stateOf(list_, row_.row());
        state.invisible = !row_.isVisible();
        return state;
    }

    QStringList actionNames() const override { return rowActions(list_); }

    void doAction(const QString& action) override {
        if (row_.row() >= 0) {
            doRowAction(list_, row_.row(), action);
        }
    }

    QString localizedActionName(const QString& action) const override {
        const QString name = nameOfRowAction(action);
        return name.isEmpty() ? QAccessibleWidget::localizedActionName(action) : name;
    }

    QStringList keyBindingsForAction(const QString& action) const override {
        return keysOfRowAction(action);
    }

  private:
    RowList& list_;
    ListRow& row_;
};

/// A row that is out of sight, known by its position only. The assistive program may keep it
/// longer than the list or the row lives.
class DistantRowInterface : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    DistantRowInterface(RowList& list, int row) : list_(&list), row_(row) {}

    int row() const { return row_; }

    bool isValid() const override { return list() != nullptr; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text /*which*/, const QString& /*text*/) override {}

    QWindow* window() const override {
        const RowList* list = this->list();
        return list == nullptr ? nullptr : list->window()->windowHandle();
    }

    QAccessibleInterface* parent() const override {
        RowList* list = this->list();
        return list == nullptr ? nullptr : QAccessible::queryAccessibleInterface(list);
    }

    QString text(QAccessible::Text which) const override {
        const RowList* list = this->list();
        return list != nullptr && which == QAccessible::Name ? list->source().titleOf(row_)
                                                             : QString();
    }

    QRect rect() const override {
        const RowList* list = this->list();
        if (list == nullptr) {
            return {};
        }
        const QRect rect = list->rowRect(row_);
        return {list->viewport()->mapToGlobal(rect.topLeft()), rect.size()};
    }

    QAccessible::State state() const override {
        const RowList* list = this->list();
        if (list != nullptr) {
            return stateOf(*list, row_);
        }
        QAccessible::State state;
        state.invalid = true;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override {
        const RowList* list = this->list();
        return list == nullptr ? QStringList() : rowActions(*list);
    }

    void doAction(const QString& action) override {
        if (RowList* list = this->list()) {
            doRowAction(*list, row_, action);
        }
    }

    QString localizedActionName(const QString& action) const override {
        const QString name = nameOfRowAction(action);
        return name.isEmpty() ? QAccessibleActionInterface::localizedActionName(action) : name;
    }

    QStringList keyBindingsForAction(const QString& action) const override {
        return keysOfRowAction(action);
    }

  private:
    /// Null once the list or the row is gone.
    RowList* list() const {
        RowList* list = list_.data();
        return list != nullptr && row_ < list->source().count() ? list : nullptr;
    }

    QPointer<RowList> list_;
    int row_;
};

class ListInterface : public QAccessibleWidget {
  public:
    explicit ListInterface(RowList& list)
        : QAccessibleWidget(&list, QAccessible::List), list_(list) {}
    ~ListInterface() override { forgetDistantRows(); }
    ListInterface(const ListInterface&) = delete;
    ListInterface& operator=(const ListInterface&) = delete;

    int childCount() const override { return list_.source().count(); }

    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        if (ListRow* row = list_.realisedRow(index)) {
            return QAccessible::queryAccessibleInterface(row);
        }
        const auto known = distantRows_.find(index);
        if (known != distantRows_.end()) {
            return QAccessible::accessibleInterface(known->second);
        }
        auto* row = new DistantRowInterface(list_, index);
        distantRows_.emplace(index, QAccessible::registerAccessibleInterface(row));
        return row;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        if (child == nullptr) {
            return -1;
        }
        if (const auto* row = qobject_cast<ListRow*>(child->object())) {
            return row->row();
        }
        const auto* distant = dynamic_cast<const DistantRowInterface*>(child);
        return distant == nullptr ? -1 : distant->row();
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint position = list_.viewport()->mapFromGlobal(QPoint(x, y));
        return list_.viewport()->rect().contains(position) ? child(list_.rowAt(position)) : nullptr;
    }

    QAccessibleInterface* focusChild() const override {
        return list_.hasFocus() && list_.currentRow() >= 0 ? child(list_.currentRow())
                                                           : QAccessibleWidget::focusChild();
    }

    void forgetDistantRows() {
        for (const auto& [row, id] : distantRows_) {
            QAccessible::deleteAccessibleInterface(id);
        }
        distantRows_.clear();
    }

  private:
    RowList& list_;
    mutable std::unordered_map<int, QAccessible::Id> distantRows_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    if (auto* list = qobject_cast<RowList*>(object)) {
        return new ListInterface(*list);
    }
    auto* row = qobject_cast<ListRow*>(object);
    RowList* list = row == nullptr ? nullptr : listOf(*row);
    return list == nullptr ? nullptr : new RowInterface(*list, *row);
}

} // namespace

void installRowListAccessibility() {
    // The framework takes a factory once however often it is handed over.
    QAccessible::installFactory(makeInterface);
}

void announceRowsChanged(RowList& list) {
    if (!QAccessible::isActive()) {
        return;
    }
    if (auto* interface =
            dynamic_cast<ListInterface*>(QAccessible::queryAccessibleInterface(&list))) {
        interface->forgetDistantRows();
    }
    QAccessibleEvent event(&list, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void announceRowFocused(RowList& list, int row) {
    if (!QAccessible::isActive()) {
        return;
    }
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&list);
    QAccessibleInterface* child = interface == nullptr ? nullptr : interface->child(row);
    if (child != nullptr) {
        QAccessibleEvent event(child, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace kestrel::linux_shell
