#pragma once
// A panel that hangs from the top edge of a window's content and keeps the user from the rest
// until it closes. It is part of the window: it moves with it and needs nothing of the window
// manager.

#include <QPointer>
#include <QWidget>

namespace kestrel::linux_shell {

class Sheet : public QWidget {
    Q_OBJECT

  public:
    /// Covers `window`, a content widget whose child it becomes, and shows `content`, which it
    /// takes over. `behind` is disabled while the sheet is open. `name` is the accessible name.
    Sheet(QWidget& content, const QString& name, QWidget& behind, QWidget& window);
    ~Sheet() override;

    /// Disappears at once and gives `behind` back; the object deletes itself later, because this
    /// may be called by a control of the content.
    void close();

    QWidget& content() const { return content_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void place();

    QWidget& content_;
    QPointer<QWidget> behind_;
    QPointer<QWidget> focusBefore_;
};

} // namespace kestrel::linux_shell
