#include "shells/linux/desktop/window_server.h"

#include "shells/linux/desktop/window_frame.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace kestrel::linux_shell {
namespace {

bool has(WindowStyleMask mask, WindowStyleMask style) {
    return (static_cast<unsigned>(mask) & static_cast<unsigned>(style)) != 0;
}

Qt::WindowFlags flagsFor(WindowStyleMask mask) {
    using enum WindowStyleMask;
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
    if (has(mask, titled)) {
        flags |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    }
    if (has(mask, closable)) {
        flags |= Qt::WindowCloseButtonHint;
    }
    if (has(mask, miniaturizable)) {
        flags |= Qt::WindowMinimizeButtonHint;
    }
    if (has(mask, resizable)) {
        flags |= Qt::WindowMaximizeButtonHint;
    }
    return flags;
}

/// The program's icon, as installed or as it comes with the program. Looked up for the first window
/// that shows it: at start-up it would be the dearest step of all.
QIcon applicationIcon() {
    return QIcon::fromTheme(QStringLiteral("app.kestrel.Kestrel"),
                            QIcon(QStringLiteral(":/kestrel/icons/app.kestrel.Kestrel.svg")));
}

} // namespace

SettingsWindowShell::SettingsWindowShell(Rect contentRect, WindowStyleMask styleMask,
                                         const QIcon& icon)
    : frame_(new WindowFrame(*this, flagsFor(styleMask))) {
    frame_->setWindowIcon(icon);
    const QSize size(static_cast<int>(std::lround(contentRect.width)),
                     static_cast<int>(std::lround(contentRect.height)));
    if (has(styleMask, WindowStyleMask::resizable)) {
        frame_->resize(size);
    } else {
        frame_->setFixedSize(size);
    }
}

SettingsWindowShell::~SettingsWindowShell() = default;

void SettingsWindowShell::DeleteLater::operator()(WindowFrame* frame) const {
    frame->leaveShell();
    frame->hide();
    frame->deleteLater();
}

void SettingsWindowShell::setTitle(std::string_view title) {
    frame_->setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
}

void SettingsWindowShell::setContentViewController(std::unique_ptr<HostingController> controller) {
    auto* hosting = dynamic_cast<WidgetController*>(controller.get());
    Q_ASSERT_X(hosting != nullptr, "SettingsWindowShell", "a controller of another shell");
    static_cast<void>(controller.release());
    frame_->setContent(std::unique_ptr<WidgetController>(hosting));
}

void SettingsWindowShell::center() {
    auto* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    const QRect area = screen->availableGeometry();
    const QSize free = area.size() - frame_->size();
    frame_->move(area.topLeft() + QPoint(free.width() / 2, free.height() / 2));
}

void SettingsWindowShell::makeKeyAndOrderFront() {
    frame_->setWindowState(frame_->windowState() & ~Qt::WindowMinimized);
    frame_->show();
    frame_->raise();
    frame_->activateWindow();
}

QWidget* SettingsWindowShell::widget() const { return frame_.get(); }

void SettingsWindowShell::willClose() {
    if (delegate_ != nullptr) {
        delegate_->windowWillClose(this);
    }
}

std::unique_ptr<Window> QtWindowServer::makeWindow(Rect contentRect, WindowStyleMask styleMask,
                                                   BackingStore backing, WindowCreation creation) {
    Q_UNUSED(backing)
    if (icon_.isNull()) {
        icon_ = applicationIcon();
    }
    auto window = std::make_unique<SettingsWindowShell>(contentRect, styleMask, icon_);
    if (creation == WindowCreation::immediate) {
        window->widget()->winId();
    }
    return window;
}

} // namespace kestrel::linux_shell
