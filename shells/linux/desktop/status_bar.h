#pragma once
// The status area of whatever panel the desktop has: the icon appears in it as soon as such a panel
// is there, by the protocol that works best there.

#include "platform/status_bar.h"
#include "shells/linux/desktop/anchored_button.h"
#include "shells/linux/desktop/appearance/desktop_look.h"
#include "shells/linux/desktop/kwin_outputs.h"
#include "shells/linux/desktop/status_icon_images.h"
#include "shells/linux/desktop/status_notifier_item.h"
#include "shells/linux/desktop/x11.h"
#include "shells/linux/desktop/xembed_icon.h"

#include <QColor>
#include <QDBusConnection>
#include <QObject>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace kestrel::linux_shell {

class LinuxStatusItem;

/// What the core sets, and what each panel's icon is made from.
class LinuxStatusButton final : public AnchoredButton {
  public:
    explicit LinuxStatusButton(LinuxStatusItem& item) : item_(item) {}

    void setImage(std::shared_ptr<Image> image) override;
    void setImageIsTemplate(bool isTemplate) override;
    void setAction(std::function<void(StatusBarButton&)> action) override;

    /// Every panel reports a click of the main button in its own way, and no other click is passed
    /// on: the one mask there is needs nothing more.
    void sendActionOn(EventMask mask) override { static_cast<void>(mask); }

    PopoverAnchor anchor() const override;
    void setClickedPoint(QPoint point) override;

    void sendAction();

  private:
    LinuxStatusItem& item_;
    std::function<void(StatusBarButton&)> action_;
};

class LinuxStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

  public:
    LinuxStatusItem(const QDBusConnection& bus, IconRenderer renderer);

    StatusBarButton* button() override { return &button_; }

    /// True once a panel has shown the icon; it may be restarting.
    bool hasBeenShown() const { return hasBeenShown_; }

    /// What the desktop wants of programs: many panels that cannot be looked at follow it too.
    void setColorScheme(std::optional<ColorScheme> scheme);

    /// True while there is certainly no panel that could show the icon.
    bool isWithoutPanel() const;

  Q_SIGNALS:
    /// It is certain from now on whether there is a panel.
    void panelKnown();

  Q_SIGNALS:
    /// The panel lets what is done after the next click raise other windows.
    void activationTokenProvided(const QString& token);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    friend class LinuxStatusButton;

    enum class Protocol { none, notifier, xembed };

    Protocol offered() const;
    void choosePanel();
    void use(Protocol protocol);
    void dock();
    void noteShown();

    std::optional<QPoint> placeToldBy(QPoint place) const;
    void notifierClicked(QPoint place);
    void notifierMenuWanted(QPoint place);
    void clicked();
    PopoverAnchor anchor() const;

    void watch(const QScreen* screen);
    void sampleBackground();
    void updateIcon();
    QColor notifierColor() const;
    QIcon xembedIcon() const;

    StatusIconImages images_;
    LinuxStatusButton button_;
    StatusNotifierItem notifier_;
    x11::TrayArrivals arrivals_;
    std::unique_ptr<KWinOutputs> outputs_; ///< null where places need no translation
    std::unique_ptr<XEmbedIcon> xembed_;
    Protocol protocol_ = Protocol::none;
    Protocol first_;          ///< which of two that are offered is taken
    bool isTrayDeaf_ = false; ///< the panel that there is takes no icons by XEmbed after all
    bool hasBeenShown_ = false;
    QTimer headStart_; ///< of the first protocol before the second is settled for
    QTimer docking_;   ///< how long a panel may take to take the icon in
    QTimer longPress_; ///< runs while the main button is still held
    QTimer settling_;
    std::optional<ColorScheme> scheme_;
    std::optional<QColor> panelColor_; ///< that stands out from the panel, once it was seen
    std::optional<QPoint> clickedPoint_;
    PopoverAnchor::Kind clickedKind_ = PopoverAnchor::Kind::pointer; ///< of `clickedPoint_`
    bool isHiddenClick_ = false;
};

/// Main thread only.
class LinuxStatusBar final : public StatusBar {
  public:
    LinuxStatusBar(const QDBusConnection& bus, IconRenderer renderer);

    std::unique_ptr<StatusItem> statusItemWithLength(double length) override;

    /// The item made last, or null when it is gone.
    LinuxStatusItem* item() const { return item_.data(); }

  private:
    QDBusConnection bus_;
    IconRenderer renderer_;
    QPointer<LinuxStatusItem> item_;
};

} // namespace kestrel::linux_shell
