#pragma once
// A menu whose deleting actions are drawn in the colour of things that delete, and which tells the
// keys that do the same elsewhere. It does not listen for them: an action's own shortcut would come
// before what the keys mean where the focus is.

#include <QKeySequence>
#include <QMenu>

namespace kestrel::linux_shell {

class ActionsMenu : public QMenu {
    Q_OBJECT

  public:
    explicit ActionsMenu(QWidget* parent);

    QAction* addDestructiveAction(const QString& title);

    /// Shows them beside the action, where the desktop wants keys shown in menus.
    void showKeys(QAction& action, const QKeySequence& keys);

    /// Empty for an action without any.
    static QString shownKeys(const QAction& action);

    /// The width of the widest keys; 0 without any.
    int keysWidth() const;

  protected:
    bool event(QEvent* event) override;
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

  private:
    void reserveKeys();
    void layOutAnew();
};

} // namespace kestrel::linux_shell
