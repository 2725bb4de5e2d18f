#pragma once
// The status area of whatever panel the desktop has: the icon appears in it by
// StatusNotifierItem, else by XEmbed, as soon as such a panel is there.

#include "platform/status_bar.h"
#include "shells/linux/desktop/anchored_button.h"
#include "shells/linux/desktop/status_notifier_item.h"
#include "shells/linux/desktop/x11.h"
#include "shells/linux/desktop/xembed_icon.h"

#include <QDBusConnection>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace kestrel::linux_shell {

/// Draws an image as a square of so many pixels.
using IconRenderer = std::function<QImage(const Image&, int pixels)>;

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

    const Image* image() const { return image_.get(); }
    bool isTemplate() const { return isTemplate_; }
    void sendAction();

  private:
    LinuxStatusItem& item_;
    std::shared_ptr<Image> image_;
    bool isTemplate_ = false;
    std::function<void(StatusBarButton&)> action_;
};

class LinuxStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

  public:
    LinuxStatusItem(const QDBusConnection& bus, IconRenderer renderer);

    StatusBarButton* button() override { return &button_; }

    /// True while a panel shows the icon, or is about to.
    bool hasPanel() const;

    /// True once there has been such a panel; it may be restarting.
    bool hasHadPanel() const { return hasHadPanel_; }

    /// Without a click, the popover goes where the icon is known to be, else into the corner.
    PopoverAnchor anchor() const;
    void updateIcon();

  Q_SIGNALS:
    /// The panel lets what is done after the next click raise other windows.
    void activationTokenProvided(const QString& token);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void choosePanel();
    void showXEmbedIcon();
    void clicked();
    void sampleBackground();
    QList<QRect> likelyPanels() const;
    std::optional<QColor> colorOn(const QList<QRect>& panels) const;
    QImage drawn(int pixels, const QColor& color) const;
    QIcon xembedIcon() const;

    IconRenderer renderer_;
    LinuxStatusButton button_;
    StatusNotifierItem notifier_;
    x11::TrayArrivals arrivals_;
    QTimer patience_;
    QTimer settling_;
    std::unique_ptr<XEmbedIcon> xembed_;
    std::optional<QColor> panelColor_; ///< that stands out from the panel, once it was seen
    std::optional<QPoint> lastClick_;
    bool isClick_ = false;
    bool hasHadPanel_ = false;
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
