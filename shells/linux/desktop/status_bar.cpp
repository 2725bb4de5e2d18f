#include "shells/linux/desktop/status_bar.h"

#include "shells/linux/desktop/template_icon.h"

#include <QApplication>
#include <QCursor>
#include <QPalette>

#include <algorithm>
#include <array>
#include <chrono>

namespace kestrel::linux_shell {
namespace {

// The sizes in pixels that panels show icons at, on plain and on dense screens.
constexpr std::array<int, 6> iconSizes{16, 22, 24, 32, 48, 64};

const QString themeName = QStringLiteral("app.kestrel.Kestrel-symbolic");

// Readable on a light panel and on a dark one, for panels that cannot be looked at.
constexpr QColor neutral(0x8C, 0x8C, 0x8C);

/// True on the desktops whose panels paint symbolic icons in their own colours. Others take the
/// drawing as it is, near black, even on a dark panel: they are better served with pixels.
bool panelTintsThemedIcons() {
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    return desktops.contains(QLatin1String("KDE")) || desktops.contains(QLatin1String("GNOME"));
}

// Panels that know both protocols often offer the older one first.
constexpr std::chrono::milliseconds notifierHeadStart{1000};

// A panel paints its background some time after the icon, and anew when its theme changes.
constexpr std::chrono::milliseconds panelSettles{300};

} // namespace

void LinuxStatusButton::setImage(std::shared_ptr<Image> image) {
    image_ = std::move(image);
    item_.updateIcon();
}

void LinuxStatusButton::setImageIsTemplate(bool isTemplate) {
    isTemplate_ = isTemplate;
    item_.updateIcon();
}

void LinuxStatusButton::setAction(std::function<void(StatusBarButton&)> action) {
    action_ = std::move(action);
}

PopoverAnchor LinuxStatusButton::anchor() const { return item_.anchor(); }

void LinuxStatusButton::sendAction() {
    if (action_) {
        action_(*this);
    }
}

LinuxStatusItem::LinuxStatusItem(const QDBusConnection& bus, IconRenderer renderer)
    : renderer_(std::move(renderer)), button_(*this), notifier_(bus), arrivals_([this] {
          panelColor_.reset();
          choosePanel();
      }) {
    patience_.setSingleShot(true);
    patience_.setInterval(notifierHeadStart);
    connect(&patience_, &QTimer::timeout, this, &LinuxStatusItem::showXEmbedIcon);
    settling_.setSingleShot(true);
    settling_.setInterval(panelSettles);
    connect(&settling_, &QTimer::timeout, this, &LinuxStatusItem::sampleBackground);
    connect(&notifier_, &StatusNotifierItem::hasHostChanged, this, &LinuxStatusItem::choosePanel);
    connect(&notifier_, &StatusNotifierItem::activationTokenProvided, this,
            &LinuxStatusItem::activationTokenProvided);
    connect(&notifier_, &StatusNotifierItem::activated, this, &LinuxStatusItem::clicked);
    qApp->installEventFilter(this);
    choosePanel();
}

bool LinuxStatusItem::hasPanel() const { return notifier_.hasHost() || x11::hasTray(); }

void LinuxStatusItem::clicked() {
    lastClick_ = QCursor::pos();
    sampleBackground();
    isClick_ = true;
    button_.sendAction();
    isClick_ = false;
}

PopoverAnchor LinuxStatusItem::anchor() const {
    using enum PopoverAnchor::Kind;
    // The X server inside a Wayland session knows neither the panel nor where the pointer is over
    // it.
    if (x11::isXWayland()) {
        return {.kind = isClick_ ? hiddenPointer : corner, .icon = {}, .point = {}};
    }
    const QRect docked = xembed_ != nullptr ? xembed_->geometry() : QRect();
    if (!docked.isEmpty()) {
        return {.kind = icon, .icon = docked, .point = {}};
    }
    if (lastClick_ && hasPanel()) {
        return {.kind = pointer, .icon = {}, .point = *lastClick_};
    }
    return {};
}

// StatusNotifierItem is the better protocol: the icon moves to it whenever it is offered.
void LinuxStatusItem::choosePanel() {
    hasHadPanel_ = hasHadPanel_ || hasPanel();
    if (notifier_.hasHost()) {
        patience_.stop();
        xembed_.reset();
        settling_.start();
        return;
    }
    lastClick_.reset();
    if (xembed_ == nullptr && x11::hasTray() && !patience_.isActive()) {
        patience_.start();
    }
}

void LinuxStatusItem::showXEmbedIcon() {
    if (notifier_.hasHost() || !x11::hasTray()) {
        return;
    }
    panelColor_.reset();
    xembed_ = std::make_unique<XEmbedIcon>(xembedIcon());
    connect(xembed_.get(), &XEmbedIcon::activated, this, &LinuxStatusItem::clicked);
    connect(xembed_.get(), &XEmbedIcon::painted, &settling_, qOverload<>(&QTimer::start));
}

// A panel that does not name its colours is looked at: its corners, or those of the icon in it,
// show the background. A change of colour paints the icon again and has this look once more, which
// then finds no other.
void LinuxStatusItem::sampleBackground() {
    if (QApplication::activePopupWidget() != nullptr) {
        return;
    }
    const auto color = colorOn(xembed_ != nullptr ? QList{xembed_->geometry()} : likelyPanels());
    if (color != panelColor_) {
        panelColor_ = color;
        updateIcon();
    }
}

// The icon is in the panel that was clicked; before any click, in any.
QList<QRect> LinuxStatusItem::likelyPanels() const {
    auto panels = x11::panels();
    const auto clicked = std::ranges::find_if(
        panels, [this](const QRect& panel) { return lastClick_ && panel.contains(*lastClick_); });
    return clicked != panels.end() ? QList{*clicked} : panels;
}

// None where one colour does not do for all of them.
std::optional<QColor> LinuxStatusItem::colorOn(const QList<QRect>& panels) const {
    std::optional<QColor> color;
    for (const QRect& panel : panels) {
        const QImage background = seenAt(panel);
        if (background.isNull()) {
            return panelColor_;
        }
        const QColor contrasting = contrastingColor(background);
        if (color && *color != contrasting) {
            return std::nullopt;
        }
        color = contrasting;
    }
    return color ? color : panelColor_;
}

QImage LinuxStatusItem::drawn(int pixels, const QColor& color) const {
    if (button_.image() == nullptr) {
        QImage nothing(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        nothing.fill(Qt::transparent);
        return nothing;
    }
    const QImage image = renderer_(*button_.image(), pixels);
    return button_.isTemplate() ? tinted(image, color) : image;
}

void LinuxStatusItem::updateIcon() {
    if (button_.image() == nullptr) {
        return;
    }
    QList<QImage> images;
    for (const int size : iconSizes) {
        images.append(drawn(size, panelColor_.value_or(neutral)));
    }
    const bool isThemed =
        button_.isTemplate() && panelTintsThemedIcons() && QIcon::hasThemeIcon(themeName);
    notifier_.setIcon(images, isThemed ? themeName : QString());
    if (xembed_ != nullptr) {
        xembed_->setIcon(xembedIcon());
    }
}

QIcon LinuxStatusItem::xembedIcon() const {
    const QColor color = x11::trayForeground().value_or(
        panelColor_.value_or(QApplication::palette().color(QPalette::WindowText)));
    QIcon icon;
    for (const int size : iconSizes) {
        icon.addPixmap(QPixmap::fromImage(drawn(size, color)));
    }
    return icon;
}

bool LinuxStatusItem::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && (event->type() == QEvent::ApplicationPaletteChange ||
                            event->type() == QEvent::ThemeChange)) {
        panelColor_.reset();
        updateIcon();
        settling_.start();
    }
    return QObject::eventFilter(watched, event);
}

LinuxStatusBar::LinuxStatusBar(const QDBusConnection& bus, IconRenderer renderer)
    : bus_(bus), renderer_(std::move(renderer)) {}

// Panels decide the width of their icons themselves.
std::unique_ptr<StatusItem> LinuxStatusBar::statusItemWithLength(double length) {
    static_cast<void>(length);
    auto item = std::make_unique<LinuxStatusItem>(bus_, renderer_);
    item_ = item.get();
    return item;
}

} // namespace kestrel::linux_shell
