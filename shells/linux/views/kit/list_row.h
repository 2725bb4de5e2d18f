#pragma once
// One row of a RowList that is in sight. The list owns it, moves it, binds it to other items as
// it scrolls and tells it how it stands; a subclass draws it.

#include <QString>
#include <QWidget>

namespace kestrel::linux_shell {

class RowList;

class ListRow : public QWidget {
    Q_OBJECT

  public:
    struct State {
        bool hovered = false; ///< the pointer is over the row
        bool current = false; ///< the row is the highlighted one of a menu, or the selected one
        friend bool operator==(const State&, const State&) = default;
    };

    explicit ListRow(QWidget* parent = nullptr);

    /// The position in the list; -1 while the row waits to be bound again.
    int row() const { return row_; }

    /// Null for a row outside any.
    RowList* list() const;
    const State& state() const { return state_; }

  protected:
    /// The state has changed; repaints.
    virtual void stateChanged() { update(); }

    /// For a row that is bound to another item: its controls must not keep the keyboard, whose
    /// next key would act on an item that the user has not chosen.
    void giveFocusToList();

    void enterEvent(QEnterEvent* event) override;

  private:
    friend class RowList;

    void setRow(int row) { row_ = row; }
    void setState(const State& state);

    int row_ = -1;
    State state_;
};

} // namespace kestrel::linux_shell
