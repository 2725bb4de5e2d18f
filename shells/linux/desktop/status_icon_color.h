#pragma once
// The colour in which the status icon can be read: what the desktop says of its panels, or what the
// panel looks like. The status item owns one and paints its icon again when it changes.

#include "shells/linux/desktop/appearance/appearance_settings.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QRect>
#include <QScreen>
#include <QTimer>

#include <functional>
#include <optional>

namespace kestrel::linux_shell {

/// Main thread only.
class StatusIconColor final : public QObject {
    Q_OBJECT

  public:
    /// `panels` tells where the panel with the icon may be, in device-independent pixels of the
    /// screen.
    explicit StatusIconColor(std::function<QList<QRect>()> panels);

    /// For an icon that the panel is given as an image over D-Bus.
    QColor onNotifierPanel() const;

    /// For an icon in an X11 tray.
    QColor inTray() const;

    /// What the desktop wants of programs: many panels that cannot be looked at follow it too.
    void setColorScheme(std::optional<ColorScheme> scheme);

    /// The panel is another one, of which nothing is known yet.
    void forgetPanel() { panelColor_.reset(); }

    /// Looks at the panel in a moment: it paints its background some time after the icon, and again
    /// when its theme changes.
    void lookSoon() { settling_.start(); }

  Q_SIGNALS:
    void changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void watch(const QScreen* screen);
    void look();

    std::function<QList<QRect>()> panels_;
    QTimer settling_;
    std::optional<ColorScheme> scheme_;
    std::optional<QColor> panelColor_; ///< that stands out from the panel, once it was seen
};

} // namespace kestrel::linux_shell
