#pragma once
// The program's icon in panels that only know the older XEmbed protocol of X11.

#include <QIcon>
#include <QImage>
#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

namespace kestrel::linux_shell {

/// Main thread only. Make it when such a panel is there and no StatusNotifierItem host is: the
/// toolkit chooses its protocol by that, once. It follows the panel's restarts by itself.
class XEmbedIcon final : public QObject {
    Q_OBJECT

  public:
    explicit XEmbedIcon(const QIcon& icon);

    void setIcon(const QIcon& icon) { icon_.setIcon(icon); }

    /// Where the icon is on the screen; empty while no panel shows it or its answer is not to be
    /// trusted.
    QRect geometry() const;

  Q_SIGNALS:
    /// The left button was released on the icon.
    void activated();
    /// The icon has been drawn.
    void painted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QSystemTrayIcon icon_;
};

} // namespace kestrel::linux_shell
