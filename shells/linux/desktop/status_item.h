#pragma once
// The icon in the status area of whatever panel the desktop has: it appears as soon as such a panel
// is there, by the protocol that works best in it.

#include "platform/status_item.h"
#include "shells/linux/desktop/kwin_outputs.h"
#include "shells/linux/desktop/popover_anchor.h"
#include "shells/linux/desktop/status_icon_color.h"
#include "shells/linux/desktop/status_icon_images.h"
#include "shells/linux/desktop/status_notifier_item.h"
#include "shells/linux/desktop/x11.h"
#include "shells/linux/desktop/xembed_icon.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace kestrel::linux_shell {

/// Main thread only.
class LinuxStatusItem final : public QObject, public StatusItem, public PopoverAnchorSource {
    Q_OBJECT

  public:
    /// `renderer` draws the icon, assistive technologies call it `name`. `onClick` is called at
    /// each click of the main button, which every panel reports in its own way.
    LinuxStatusItem(const QDBusConnection& bus, const QString& name, IconRenderer renderer,
                    std::function<void()> onClick);

    /// True once a panel has shown the icon; it may be restarting.
    bool hasBeenShown() const { return hasBeenShown_; }

    /// What the desktop wants of programs.
    void setColorScheme(std::optional<ColorScheme> scheme) { color_.setColorScheme(scheme); }

    /// True while there is certainly no panel that could show the icon.
    bool isWithoutPanel() const;

    PopoverAnchor anchor() const override;
    void setClickedPoint(QPoint point) override;

  Q_SIGNALS:
    /// It is certain from now on whether there is a panel.
    void panelKnown();
    /// The panel lets what is done after the next click raise other windows.
    void activationTokenProvided(const QString& token);

  private:
    enum class Protocol { none, notifier, xembed };

    Protocol offered() const;
    void choosePanel();
    void use(Protocol protocol);
    void dock();
    void noteShown() { hasBeenShown_ = true; }

    std::optional<QPoint> placeToldBy(QPoint place) const;
    void notifierClicked(QPoint place);
    void notifierMenuWanted(QPoint place);
    void clicked();

    QList<QRect> panels() const;
    void updateIcon();
    QIcon xembedIcon() const;

    IconRenderer renderer_;
    std::function<void()> onClick_;
    StatusIconColor color_;
    StatusNotifierItem notifier_;
    x11::TrayWatch tray_;
    std::unique_ptr<KWinOutputs> outputs_; ///< null where places need no translation
    std::unique_ptr<XEmbedIcon> xembed_;
    Protocol protocol_ = Protocol::none;
    Protocol first_;           ///< which of two that are offered is taken
    bool ignoresTray_ = false; ///< the panel announces an XEmbed tray but takes no icon into it
    bool hasBeenShown_ = false;
    QTimer headStart_; ///< of the first protocol before the second is settled for
    QTimer docking_;   ///< how long a panel may take to take the icon in
    QTimer longPress_; ///< runs while the main button is still held
    std::optional<QPoint> clickedPoint_;
    PopoverAnchor::Kind clickedKind_ = PopoverAnchor::Kind::pointer; ///< of `clickedPoint_`
    bool isHiddenClick_ = false;
};

} // namespace kestrel::linux_shell
