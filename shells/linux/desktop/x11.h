#pragma once
// The few questions that this shell asks the X server itself, because Qt has no call for them. Each
// answers "no" when the program does not run on X11.

#include <QAbstractNativeEventFilter>
#include <QColor>
#include <QList>
#include <QRect>

#include <cstdint>
#include <functional>
#include <optional>

namespace kestrel::linux_shell::x11 {

/// True when windows are placed through an X server, be it a real one or XWayland.
bool isAvailable();

/// True when that server is only a guest of a Wayland compositor.
bool isXWayland();

/// True while a panel accepts icons by the XEmbed protocol.
bool hasTray();

/// The colour in which that panel wants template icons drawn, when it says so.
std::optional<QColor> trayForeground();

/// True when that panel shows what is behind an icon's transparent parts.
bool trayBlends();

/// Where the panels of the desktop stand, in device-independent pixels; none of a Wayland
/// session's.
QList<QRect> panels();

/// A point in pixels of the screens in device-independent ones.
QPoint independentOfDevice(QPoint point);

/// True while translucent windows are blended; without it they show black.
bool isCompositing();

/// True while the left, middle or right mouse button is held, wherever the pointer is.
bool isMouseButtonDown();

/// True while the left one is held, and no other.
bool isLeftButtonAloneDown();

/// Tells when a panel starts to accept icons by the XEmbed protocol, and when one names other
/// colours for them. Main thread only; costs nothing while neither happens.
class TrayWatch : public QAbstractNativeEventFilter {
  public:
    struct Callbacks {
        std::function<void()> arrived;
        std::function<void()> recolored;
    };

    explicit TrayWatch(Callbacks callbacks);
    ~TrayWatch() override;
    TrayWatch(const TrayWatch&) = delete;
    TrayWatch& operator=(const TrayWatch&) = delete;

    /// Listens to the colours of the panel that accepts icons now.
    void listenToColors() const;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    Callbacks callbacks_;
    std::uint32_t managerAtom_ = 0;
    std::uint32_t trayAtom_ = 0;
    std::uint32_t colorsAtom_ = 0;
};

} // namespace kestrel::linux_shell::x11
