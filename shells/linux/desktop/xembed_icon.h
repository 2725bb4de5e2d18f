#pragma once
// The program's icon in panels that take in windows by the older XEmbed protocol of X11: a window
// of ours that becomes a child of theirs. The toolkit's own such icon settles for one protocol for
// the whole life of the process, by what is there at its start; this one comes and goes with the
// panel.

#include <QAbstractNativeEventFilter>
#include <QIcon>
#include <QPixmap>
#include <QRect>
#include <QWidget>

namespace kestrel::linux_shell {

/// Main thread only. Make it while such a panel is there, for that one panel; without one it is
/// never shown.
class XEmbedIcon final : public QWidget, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    /// `name` is what the tooltip and assistive technologies call it.
    XEmbedIcon(const QString& name, const QIcon& icon);
    ~XEmbedIcon() override;
    XEmbedIcon(const XEmbedIcon&) = delete;
    XEmbedIcon& operator=(const XEmbedIcon&) = delete;

    void setIcon(const QIcon& icon);

    /// True once the panel has taken the icon in.
    bool isDocked() const { return isDocked_; }

    /// Where the icon is on the screen; empty while no panel shows it or its answer is not to be
    /// trusted.
    QRect rectOnScreen() const;

  Q_SIGNALS:
    /// The left button was released on the icon. Comes from the event loop.
    void activated();
    /// The panel has taken the icon in.
    void docked();
    /// The icon has been drawn.
    void painted();
    /// The panel has gone, and has left the icon's window on the bare screen or taken it with it.
    /// Not the moment to delete the icon.
    void undocked();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void enterPanel();
    void leavePanel();
    void forgetBackground();

    QIcon icon_;
    QPixmap background_; ///< the panel's, where it does not show through; fetched when null
    bool isDocked_ = false;
};

} // namespace kestrel::linux_shell
