#include "shells/linux/views/kit/row_list_accessible.h"

#include "shells/linux/views/kit/row_list.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

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

std::optional<RowAction> actionOf(RowList& list, const QString& name) {
    std::vector<RowAction> actions = list.rowActions();
    const auto found = std::ranges::find(actions, name, &RowAction::name);
    return found == actions.end() ? std::nullopt : std::optional(std::move(*found));
}

QStringList namesOfActions(RowList& list) {
    QStringList names;
    if (list.isEnabled()) {
        for (const RowAction& action : list.rowActions()) {
            names << action.name;
        }
    }
    return names;
}

void doRowAction(RowList& list, int row, const QString& name) {
    const auto action = actionOf(list, name);
    // The list may not have heard yet that the row has come or gone.
    if (action && list.isEnabled() && row >= 0 && row < list.count()) {
        list.ensureVisible(row);
        action->perform(row);
    }
}

/// What the framework has no text of its own for; empty for the rest.
QString textOfAction(RowList& list, const QString& name) {
    const auto action = actionOf(list, name);
    return action ? action->text : QString();
}

QStringList keysOfAction(RowList& list, const QString& name) {
    const auto action = actionOf(list, name);
    return action && !action->keys.isEmpty() ? QStringList{action->keys.toString()} : QStringList();
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
        return which == QAccessible::Name && row >= 0 && row < list_.count()
                   ? list_.source().titleOf(row)
                   : QAccessibleWidget::text(which);
    }

    QAccessible::State state() const override {
        QAccessible::State state = stateOf(list_, row_.row());
        state.invisible = !row_.isVisible();
        return state;
    }

    QStringList actionNames() const override { return namesOfActions(list_); }

    void doAction(const QString& name) override { doRowAction(list_, row_.row(), name); }

    QString localizedActionName(const QString& name) const override {
        const QString text = textOfAction(list_, name);
        return text.isEmpty() ? QAccessibleWidget::localizedActionName(name) : text;
    }

    QStringList keyBindingsForAction(const QString& name) const override {
        return keysOfAction(list_, name);
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
        RowList* list = this->list();
        return list == nullptr ? QStringList() : namesOfActions(*list);
    }

    void doAction(const QString& name) override {
        if (RowList* list = this->list()) {
            doRowAction(*list, row_, name);
        }
    }

    QString localizedActionName(const QString& name) const override {
        RowList* list = this->list();
        const QString text = list == nullptr ? QString() : textOfAction(*list, name);
        return text.isEmpty() ? QAccessibleActionInterface::localizedActionName(name) : text;
    }

    QStringList keyBindingsForAction(const QString& name) const override {
        RowList* list = this->list();
        return list == nullptr ? QStringList() : keysOfAction(*list, name);
    }

  private:
    /// Null once the list or the row is gone.
    RowList* list() const {
        RowList* list = list_.data();
        return list != nullptr && row_ < list->count() ? list : nullptr;
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

    int childCount() const override { return list_.count(); }

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
    RowList* list = row == nullptr ? nullptr : row->list();
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
