#pragma once
// What the X server's root window and the panels on it have told, kept until they tell of a change:
// an opening of the popover then need not ask again. Used by x11.cpp.

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRect>

#include <cstdint>
#include <optional>
#include <set>
#include <vector>
#include <xcb/xcb.h>

namespace kestrel::linux_shell::x11 {

/// Main thread only. Child of the application object, because it listens to the server's events.
class DesktopWatch final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    /// The one of this application; null when the program does not run on X11.
    static DesktopWatch* current();

    DesktopWatch(xcb_connection_t* c, QObject* application);
    DesktopWatch(const DesktopWatch&) = delete;
    DesktopWatch& operator=(const DesktopWatch&) = delete;
    ~DesktopWatch() override = default;

    /// True while a compositor has claimed the screen.
    bool hasCompositor();

    /// Where the shown windows of panels stand, in the server's pixels.
    const std::vector<QRect>& panels();

  private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void listenToSelection();
    void noteEvent(const xcb_generic_event_t& event);
    std::vector<QRect> askForPanels();
    bool listenTo(const std::vector<xcb_window_t>& windows);

    xcb_connection_t* c_;
    xcb_atom_t clientList_;
    xcb_atom_t compositor_;
    unsigned selectionEvent_ = 0; ///< the number of that event; 0 where the server sends none
    std::optional<bool> hasCompositor_;
    std::optional<std::vector<QRect>> panels_;
    std::set<xcb_window_t> watched_; ///< the panels that tell of their moves
};

} // namespace kestrel::linux_shell::x11
