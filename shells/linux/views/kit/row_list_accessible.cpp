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

/// What all rows have in common; `Base` is what the framework has for them.
template <class Base>
class RowInterface : public Base {
  public:
    using Base::Base;

    virtual int row() const = 0;

    QStringList actionNames() const override {
        QStringList names;
        for (const RowAction& action : actions())
            names << action.name;
        return names;
    }

    void doAction(const QString& name) override {
        RowList* list = listWithRow();
        if (const auto action = actionOf(name); action && list != nullptr) {
            const int row = this->row();
            list->ensureVisible(row);
            action->perform(row);
        }
    }

    QString localizedActionName(const QString& name) const override {
        const auto action = actionOf(name);
        return action && !action->text.isEmpty() ? action->text : Base::localizedActionName(name);
    }

    QStringList keyBindingsForAction(const QString& name) const override {
        const auto action = actionOf(name);
        return action && !action->keys.isEmpty() ? QStringList{action->keys.toString()}
                                                 : QStringList();
    }

  protected:
    /// Null once the list is gone or has begun to go.
    virtual RowList* list() const = 0;

    /// Null also when the row has gone, of which the list may not have heard yet.
    RowList* listWithRow() const {
        RowList* list = this->list();
        return list != nullptr && row() >= 0 && row() < list->count() ? list : nullptr;
    }

  private:
    std::vector<RowAction> actions() const {
        RowList* list = listWithRow();
        return list != nullptr && list->isEnabled() ? list->rowActions() : std::vector<RowAction>();
    }

    std::optional<RowAction> actionOf(const QString& name) const {
        const std::vector<RowAction> actions = this->actions();
        const auto found = std::ranges::find(actions, name, &RowAction::name);
        return found == actions.end() ? std::nullopt : std::optional(*found);
    }
};

/// A row that has a widget.
class NearRowInterface final : public RowInterface<QAccessibleWidget> {
  public:
    explicit NearRowInterface(ListRow& row)
        : RowInterface(&row, QAccessible::ListItem), row_(row) {}

    int row() const override { return row_.row(); }

    QAccessibleInterface* parent() const override {
        RowList* list = this->list();
        return list == nullptr ? QAccessibleWidget::parent()
                               : QAccessible::queryAccessibleInterface(list);
    }

    QString text(QAccessible::Text which) const override {
        const RowList* list = listWithRow();
        return which == QAccessible::Name && list != nullptr ? list->source().titleOf(row())
                                                             : QAccessibleWidget::text(which);
    }

    QAccessible::State state() const override {
        const RowList* list = this->list();
        QAccessible::State state =
            list == nullptr ? QAccessibleWidget::state() : stateOf(*list, row());
        state.invisible = !row_.isVisible();
        return state;
    }

  private:
    RowList* list() const override { return row_.list(); }

    ListRow& row_;
};

struct PlainInterface : QAccessibleInterface, QAccessibleActionInterface {};

/// A row that is out of sight, known by its position only. The assistive program may keep it
/// longer than the list or the row lives.
class DistantRowInterface final : public RowInterface<PlainInterface> {
  public:
    DistantRowInterface(RowList& list, int row) : list_(&list), row_(row) {}

    int row() const override { return row_; }

    bool isValid() const override { return listWithRow() != nullptr; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text /*which*/, const QString& /*text*/) override {}

    QAccessibleInterface* parent() const override {
        RowList* list = listWithRow();
        return list == nullptr ? nullptr : QAccessible::queryAccessibleInterface(list);
    }

    QWindow* window() const override {
        const RowList* list = listWithRow();
        return list == nullptr ? nullptr : list->window()->windowHandle();
    }

    QString text(QAccessible::Text which) const override {
        const RowList* list = listWithRow();
        return list != nullptr && which == QAccessible::Name ? list->source().titleOf(row_)
                                                             : QString();
    }

    QRect rect() const override {
        const RowList* list = listWithRow();
        const QRect rect = list == nullptr ? QRect() : list->rowRect(row_);
        return list == nullptr ? rect : rect.translated(list->viewport()->mapToGlobal(QPoint()));
    }

    QAccessible::State state() const override {
        const RowList* list = listWithRow();
        QAccessible::State invalid;
        invalid.invalid = true;
        return list == nullptr ? invalid : stateOf(*list, row_);
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

  private:
    RowList* list() const override { return list_; }

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
        if (index < 0 || index >= childCount())
            return nullptr;
        if (ListRow* row = list_.realisedRow(index))
            return QAccessible::queryAccessibleInterface(row);
        const auto known = distantRows_.find(index);
        if (known != distantRows_.end())
            return QAccessible::accessibleInterface(known->second);
        auto* row = new DistantRowInterface(list_, index);
        distantRows_.emplace(index, QAccessible::registerAccessibleInterface(row));
        return row;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        if (child == nullptr)
            return -1;
        if (const auto* row = qobject_cast<ListRow*>(child->object()))
            return row->row();
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
        for (const auto& [row, id] : distantRows_)
            QAccessible::deleteAccessibleInterface(id);
        distantRows_.clear();
    }

  private:
    RowList& list_;
    mutable std::unordered_map<int, QAccessible::Id> distantRows_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    if (auto* list = qobject_cast<RowList*>(object))
        return new ListInterface(*list);
    auto* row = qobject_cast<ListRow*>(object);
    return row == nullptr || row->list() == nullptr ? nullptr : new NearRowInterface(*row);
}

void reportFocusedRow(RowList& list) {
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&list);
    if (interface == nullptr || !list.hasFocus() || list.currentRow() < 0)
        return;
    if (QAccessibleInterface* const row = interface->child(list.currentRow())) {
        QAccessibleEvent event(row, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace

void installRowListAccessibility() {
    // The framework takes a factory once however often it is handed over.
    QAccessible::installFactory(makeInterface);
}

void announceRowsChanged(RowList& list) {
    if (!QAccessible::isActive())
        return;
    if (auto* interface =
            dynamic_cast<ListInterface*>(QAccessible::queryAccessibleInterface(&list)))
        interface->forgetDistantRows();
    QAccessibleEvent event(&list, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void announceFocusedRow(RowList& list) {
    if (!QAccessible::isActive())
        return;
    // Later, because the toolkit reports the focus of a list after the list itself has heard of it,
    // and the last that is reported is what a screen reader takes for the focus.
    QMetaObject::invokeMethod(
        &list, [&list] { reportFocusedRow(list); }, Qt::QueuedConnection);
}

} // namespace kestrel::linux_shell
