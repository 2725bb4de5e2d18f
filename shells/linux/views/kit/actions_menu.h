#pragma once
// A menu whose deleting actions are drawn in the colour of things that delete.

#include <QMenu>

namespace kestrel::linux_shell {

class ActionsMenu : public QMenu {
    Q_OBJECT

  public:
    explicit ActionsMenu(QWidget* parent);

    QAction* addDestructiveAction(const QString& title);

  protected:
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;
};

} // namespace kestrel::linux_shell
