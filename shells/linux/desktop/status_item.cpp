#include "shells/linux/desktop/status_item.h"

#include "shells/linux/desktop/current_desktop.h"
#include "shells/linux/desktop/panel_color.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>

#include <chrono>
#include <utility>

namespace kestrel::linux_shell {
namespace {

const QString themeName = QStringLiteral("app.kestrel.Kestrel-symbolic");

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

} // namespace

// The indicators of GNOME's shell activate an item only at a double click; an icon that its tray
// takes in gets every click. Everywhere else StatusNotifierItem is the better protocol.
LinuxStatusItem::LinuxStatusItem(const QDBusConnection& bus, const QString& name,
                                 IconRenderer renderer, std::function<void()> onClick)
    : renderer_(std::move(renderer)),
      onClick_(std::move(onClick)),
      color_([this] { return panels(); }),
      notifier_(bus, name),
      tray_({.arrived =
                 [this] {
                     color_.forgetPanel();
                     ignoresTray_ = false;
                     choosePanel();
                 },
             .recolored = [this] { updateIcon(); }}),
      first_(currentDesktopIs(u"GNOME") ? Protocol::xembed : Protocol::notifier) {
    if (currentDesktopIs(u"KDE") && x11::isXWayland())
        outputs_ = std::make_unique<KWinOutputs>(bus);
    for (QTimer* timer : {&headStart_, &docking_})
        timer->setSingleShot(true);
    headStart_.setInterval(headStart);
    docking_.setInterval(dockingTime);
    longPress_.setInterval(buttonInterval);
    connect(&headStart_, &QTimer::timeout, this, [this] { use(offered()); });
    connect(&docking_, &QTimer::timeout, this, [this] {
        ignoresTray_ = true;
        choosePanel();
    });
    connect(&color_, &StatusIconColor::changed, this, &LinuxStatusItem::updateIcon);
    connect(&notifier_, &StatusNotifierItem::hasHostChanged, this, &LinuxStatusItem::choosePanel);
    connect(&notifier_, &StatusNotifierItem::activationTokenProvided, this,
            &LinuxStatusItem::activationTokenProvided);
    connect(&notifier_, &StatusNotifierItem::hostKnown, this, &LinuxStatusItem::panelKnown);
    connect(&notifier_, &StatusNotifierItem::shown, this, &LinuxStatusItem::noteShown);
    connect(&notifier_, &StatusNotifierItem::activated, this, &LinuxStatusItem::notifierClicked);
    connect(&notifier_, &StatusNotifierItem::menuWanted, this,
            &LinuxStatusItem::notifierMenuWanted);
    updateIcon();
    // Where this protocol comes first, it is offered before any panel is known.
    notifier_.setOffered(first_ == Protocol::notifier);
    choosePanel();
}

bool LinuxStatusItem::isWithoutPanel() const {
    return notifier_.knowsHost() && offered() == Protocol::none;
}

LinuxStatusItem::Protocol LinuxStatusItem::offered() const {
    const bool hasTray = x11::hasTray() && !ignoresTray_;
    if (notifier_.hasHost() && (first_ == Protocol::notifier || !hasTray))
        return Protocol::notifier;
    return hasTray ? Protocol::xembed : Protocol::none;
}

void LinuxStatusItem::choosePanel() {
    const Protocol best = offered();
    if (best == protocol_)
        color_.lookSoon(); // the panel may have restarted in another colour
    else if (best == Protocol::none || best == first_)
        use(best);
    else if (!headStart_.isActive())
        headStart_.start();
}

void LinuxStatusItem::use(Protocol protocol) {
    headStart_.stop();
    if (protocol == protocol_)
        return;
    protocol_ = protocol;
    clickedPoint_.reset();
    docking_.stop();
    xembed_.reset();
    notifier_.setOffered(protocol == Protocol::notifier || first_ == Protocol::notifier);
    if (protocol == Protocol::xembed)
        dock();
    else if (protocol == Protocol::notifier)
        color_.lookSoon();
}

void LinuxStatusItem::dock() {
    color_.forgetPanel();
    tray_.listenToColors();
    xembed_ = std::make_unique<XEmbedIcon>(notifier_.title(), xembedIcon());
    docking_.start();
    connect(xembed_.get(), &XEmbedIcon::docked, this, [this] {
        docking_.stop();
        noteShown();
    });
    const auto leave = [this] {
        use(Protocol::none);
        choosePanel();
    };
    connect(xembed_.get(), &XEmbedIcon::undocked, this, leave, Qt::QueuedConnection);
    connect(xembed_.get(), &XEmbedIcon::activated, this, &LinuxStatusItem::clicked);
    connect(xembed_.get(), &XEmbedIcon::painted, &color_, &StatusIconColor::lookSoon);
}

// The panels of these desktops say truly where the icon was clicked. Others pass zeros, or a place
// inside the icon.
std::optional<QPoint> LinuxStatusItem::placeToldBy(QPoint place) const {
    if (!currentDesktopIs(u"KDE") && !currentDesktopIs(u"GNOME"))
        return std::nullopt;
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
    if (!isHiddenClick_)
        setClickedPoint(QCursor::pos());
    clicked();
    isHiddenClick_ = false;
}

// Plasma's panel asks for the menu also when the main button has been held for most of a second.
// Inside a Wayland session nobody tells which button that was.
void LinuxStatusItem::notifierMenuWanted(QPoint place) {
    if (!currentDesktopIs(u"KDE") || x11::isXWayland() || !x11::isLeftButtonAloneDown())
        return;
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
    onClick_();
    color_.lookSoon();
}

PopoverAnchor LinuxStatusItem::anchor() const {
    using enum PopoverAnchor::Kind;
    if (isHiddenClick_)
        return {.kind = hiddenPointer, .icon = {}, .point = clickedPoint_};
    const QRect docked = xembed_ != nullptr ? xembed_->rectOnScreen() : QRect();
    if (!docked.isEmpty())
        return {.kind = icon, .icon = docked, .point = {}};
    if (clickedPoint_)
        return {.kind = clickedKind_, .icon = {}, .point = clickedPoint_};
    return {};
}

void LinuxStatusItem::setClickedPoint(QPoint point) {
    clickedPoint_ = point;
    clickedKind_ = PopoverAnchor::Kind::pointer;
}

QList<QRect> LinuxStatusItem::panels() const {
    return xembed_ != nullptr ? QList{xembed_->rectOnScreen()} : likelyPanels(clickedPoint_);
}

void LinuxStatusItem::updateIcon() {
    const bool isThemed = panelTintsThemedIcons() && QIcon::hasThemeIcon(themeName);
    notifier_.setIcon(statusIconImages(renderer_, color_.onNotifierPanel()),
                      isThemed ? themeName : QString());
    if (xembed_ != nullptr)
        xembed_->setIcon(xembedIcon());
}

QIcon LinuxStatusItem::xembedIcon() const {
    return iconOf(statusIconImages(renderer_, color_.inTray()));
}

} // namespace kestrel::linux_shell
