#include "shells/linux/desktop/status_bar.h"

#include "shells/linux/desktop/current_desktop.h"
#include "shells/linux/desktop/panel_color.h"
#include "shells/linux/desktop/template_icon.h"

#include <QApplication>
#include <QCursor>
#include <QPalette>
#include <QScreen>

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {
namespace {

const QString themeName = QStringLiteral("app.kestrel.Kestrel-symbolic");

// Readable on a light panel and on a dark one.
constexpr QColor neutral(0x8C, 0x8C, 0x8C);

/// True on the desktops whose panels paint symbolic icons in their own colours. Others take the
/// drawing as it is, near black, even on a dark panel: they are better served with pixels.
bool panelTintsThemedIcons() {
    return currentDesktopIs(u"KDE") || currentDesktopIs(u"GNOME") ||
           currentDesktopIs(u"X-Cinnamon");
}

// Panels that know both protocols often offer one of them a little earlier.
constexpr std::chrono::milliseconds headStart{1000};
constexpr std::chrono::milliseconds dockingTime{1000};

constexpr std::chrono::milliseconds buttonInterval{20};

// A panel paints its background some time after the icon, and anew when its theme changes.
constexpr std::chrono::milliseconds panelSettles{300};

} // namespace

void LinuxStatusButton::setImage(std::shared_ptr<Image> image) {
    item_.images_.setImage(std::move(image));
    item_.updateIcon();
}

void LinuxStatusButton::setImageIsTemplate(bool isTemplate) {
    item_.images_.setIsTemplate(isTemplate);
    item_.updateIcon();
}

void LinuxStatusButton::setAction(std::function<void(StatusBarButton&)> action) {
    action_ = std::move(action);
}

PopoverAnchor LinuxStatusButton::anchor() const { return item_.anchor(); }

void LinuxStatusButton::setClickedPoint(QPoint point) {
    item_.clickedPoint_ = point;
    item_.clickedKind_ = PopoverAnchor::Kind::pointer;
}

void LinuxStatusButton::sendAction() {
    if (action_) {
        action_(*this);
    }
}

// The indicators of GNOME's shell activate an item only at a double click; an icon that its tray
// takes in gets every click. Everywhere else StatusNotifierItem is the better protocol.
LinuxStatusItem::LinuxStatusItem(const QDBusConnection& bus, IconRenderer renderer)
    : images_(std::move(renderer)),
      button_(*this),
      notifier_(bus),
      arrivals_([this] {
          panelColor_.reset();
          isTrayDeaf_ = false;
          choosePanel();
      }),
      first_(currentDesktopIs(u"GNOME") ? Protocol::xembed : Protocol::notifier) {
    if (currentDesktopIs(u"KDE") && x11::isXWayland()) {
        outputs_ = std::make_unique<KWinOutputs>(bus);
    }
    for (QTimer* timer : {&headStart_, &docking_, &settling_}) {
        timer->setSingleShot(true);
    }
    headStart_.setInterval(headStart);
    docking_.setInterval(dockingTime);
    longPress_.setInterval(buttonInterval);
    settling_.setInterval(panelSettles);
    connect(&headStart_, &QTimer::timeout, this, [this] { use(offered()); });
    connect(&docking_, &QTimer::timeout, this, [this] {
        isTrayDeaf_ = true;
        choosePanel();
    });
    connect(&settling_, &QTimer::timeout, this, &LinuxStatusItem::sampleBackground);
    connect(&notifier_, &StatusNotifierItem::hasHostChanged, this, &LinuxStatusItem::choosePanel);
    connect(&notifier_, &StatusNotifierItem::activationTokenProvided, this,
            &LinuxStatusItem::activationTokenProvided);
    connect(&notifier_, &StatusNotifierItem::hostKnown, this, &LinuxStatusItem::panelKnown);
    connect(&notifier_, &StatusNotifierItem::shown, this, &LinuxStatusItem::noteShown);
    connect(&notifier_, &StatusNotifierItem::activated, this, &LinuxStatusItem::notifierClicked);
    connect(&notifier_, &StatusNotifierItem::menuWanted, this,
            &LinuxStatusItem::notifierMenuWanted);
    qApp->installEventFilter(this);
    // Panels that are no windows are only known by the room that is kept for them.
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &LinuxStatusItem::watch);
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens) {
        watch(screen);
    }
    // Where it comes first, it need not wait until a panel has told of itself.
    notifier_.setOffered(first_ == Protocol::notifier);
    choosePanel();
}

void LinuxStatusItem::setColorScheme(std::optional<ColorScheme> scheme) {
    if (scheme != scheme_) {
        scheme_ = scheme;
        updateIcon();
    }
}

bool LinuxStatusItem::isWithoutPanel() const {
    return notifier_.knowsHost() && offered() == Protocol::none;
}

LinuxStatusItem::Protocol LinuxStatusItem::offered() const {
    const bool hasTray = x11::hasTray() && !isTrayDeaf_;
    if (notifier_.hasHost() && (first_ == Protocol::notifier || !hasTray)) {
        return Protocol::notifier;
    }
    return hasTray ? Protocol::xembed : Protocol::none;
}

void LinuxStatusItem::choosePanel() {
    const Protocol best = offered();
    if (best == protocol_) {
        settling_.start(); // it may have begun anew, in another colour
    } else if (best == Protocol::none || best == first_) {
        use(best);
    } else if (!headStart_.isActive()) {
        headStart_.start();
    }
}

void LinuxStatusItem::use(Protocol protocol) {
    headStart_.stop();
    if (protocol == protocol_) {
        return;
    }
    protocol_ = protocol;
    clickedPoint_.reset();
    docking_.stop();
    xembed_.reset();
    notifier_.setOffered(protocol == Protocol::notifier || first_ == Protocol::notifier);
    if (protocol == Protocol::xembed) {
        dock();
    } else if (protocol == Protocol::notifier) {
        settling_.start();
    }
}

void LinuxStatusItem::dock() {
    panelColor_.reset();
    xembed_ = std::make_unique<XEmbedIcon>(xembedIcon());
    docking_.start();
    // The shell names its tray's colours only after it has called for icons.
    connect(xembed_.get(), &XEmbedIcon::docked, this, [this] {
        docking_.stop();
        updateIcon();
        noteShown();
    });
    const auto leave = [this] {
        use(Protocol::none);
        choosePanel();
    };
    connect(xembed_.get(), &XEmbedIcon::undocked, this, leave, Qt::QueuedConnection);
    connect(xembed_.get(), &XEmbedIcon::activated, this, &LinuxStatusItem::clicked);
    connect(xembed_.get(), &XEmbedIcon::painted, &settling_, qOverload<>(&QTimer::start));
}

void LinuxStatusItem::noteShown() { hasBeenShown_ = true; }

// The panels of these desktops say truly where the icon was clicked. Others pass zeros, or a place
// inside the icon.
std::optional<QPoint> LinuxStatusItem::placeToldBy(QPoint place) const {
    if (!currentDesktopIs(u"KDE") && !currentDesktopIs(u"GNOME")) {
        return std::nullopt;
    }
    const QPoint told =
        x11::independentOfDevice(outputs_ != nullptr ? outputs_->onServer(place) : place);
    return QGuiApplication::screenAt(told) != nullptr ? std::optional(told) : std::nullopt;
}

void LinuxStatusItem::notifierClicked(QPoint place) {
    if (const auto told = placeToldBy(place)) {
        clickedPoint_ = told;
        clickedKind_ = PopoverAnchor::Kind::panel;
        clicked();
        return;
    }
    // The X server inside a Wayland session does not know where the pointer is over a panel.
    isHiddenClick_ = x11::isXWayland();
    if (!isHiddenClick_) {
        button_.setClickedPoint(QCursor::pos());
    }
    clicked();
    isHiddenClick_ = false;
}

// Plasma's panel asks for the menu also when the main button has been held for most of a second.
// Inside a Wayland session nobody tells which button that was.
void LinuxStatusItem::notifierMenuWanted(QPoint place) {
    if (!currentDesktopIs(u"KDE") || x11::isXWayland() || !x11::isLeftButtonAloneDown()) {
        return;
    }
    longPress_.disconnect();
    connect(&longPress_, &QTimer::timeout, this, [this, place] {
        if (!x11::isMouseButtonDown()) {
            longPress_.stop();
            notifierClicked(place);
        }
    });
    longPress_.start();
}

// The panel is looked at again later: the popover does not wait for that.
void LinuxStatusItem::clicked() {
    button_.sendAction();
    settling_.start();
}

PopoverAnchor LinuxStatusItem::anchor() const {
    using enum PopoverAnchor::Kind;
    if (isHiddenClick_) {
        return {.kind = hiddenPointer, .icon = {}, .point = clickedPoint_};
    }
    const QRect docked = xembed_ != nullptr ? xembed_->rectOnScreen() : QRect();
    if (!docked.isEmpty()) {
        return {.kind = icon, .icon = docked, .point = {}};
    }
    if (clickedPoint_) {
        return {.kind = clickedKind_, .icon = {}, .point = clickedPoint_};
    }
    return {};
}

// A panel that does not name its colours is looked at: its corners, or those of the icon in it,
// show the background. A change of colour paints the icon again and has this look once more, which
// then finds no other.
void LinuxStatusItem::sampleBackground() {
    if (x11::isXWayland()) {
        return;
    }
    if (QApplication::activePopupWidget() != nullptr) {
        settling_.start(); // until nothing may lie over the panel
        return;
    }
    const auto color =
        colorOn(xembed_ != nullptr ? QList{xembed_->rectOnScreen()} : likelyPanels(clickedPoint_),
                panelColor_);
    if (color != panelColor_) {
        panelColor_ = color;
        updateIcon();
    }
}

void LinuxStatusItem::watch(const QScreen* screen) {
    connect(screen, &QScreen::availableGeometryChanged, &settling_, qOverload<>(&QTimer::start));
}

void LinuxStatusItem::updateIcon() {
    if (images_.isEmpty()) {
        return;
    }
    const bool isThemed =
        images_.isTemplate() && panelTintsThemedIcons() && QIcon::hasThemeIcon(themeName);
    notifier_.setIcon(images_.drawn(notifierColor()), isThemed ? themeName : QString());
    if (xembed_ != nullptr) {
        xembed_->setIcon(xembedIcon());
    }
}

// The bar of GNOME's shell is dark whatever programs are to be.
QColor LinuxStatusItem::notifierColor() const {
    if (panelColor_) {
        return *panelColor_;
    }
    if (currentDesktopIs(u"GNOME")) {
        return colorOnDark;
    }
    if (scheme_) {
        return *scheme_ == ColorScheme::dark ? colorOnDark : colorOnLight;
    }
    return neutral;
}

QIcon LinuxStatusItem::xembedIcon() const {
    return iconOf(images_.drawn(x11::trayForeground().value_or(
        panelColor_.value_or(QApplication::palette().color(QPalette::WindowText)))));
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
