#pragma once
// Where launches get what lets the launched application come to the front: a token of the
// compositor's, the one that the panel has handed over with the click on the icon, or a start-up id
// of our own.

#include "shells/linux/launching/activation.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

#include <cstdint>
#include <functional>
#include <string>

namespace kestrel::linux_shell {

/// Main thread only.
class ActivationTokens final : public QObject {
    Q_OBJECT

  public:
    /// Announces a launch at a time of the X server and gives its id: see announceLaunch.
    using Announcement = std::function<std::string(std::uint32_t time)>;

    /// A token of the compositor's for the launch that is being made; empty when it gives none.
    using CompositorToken = std::function<std::string()>;

    /// Asks the X server and KWin.
    ActivationTokens();
    ActivationTokens(Announcement announce, CompositorToken askCompositor);

    /// The panel's token for what the user does next. It replaces one that was not used; one of
    /// more than a thousand characters is none.
    void provide(const QString& token);

    /// The token belongs to what is done in this window, and lapses when the window is hidden.
    void setWindow(QObject* window) { window_ = window; }

    /// For the launch that is being made now: the compositor's token, else the panel's, given once,
    /// else a new start-up id of our own, which in a Wayland session also serves as the token.
    Activation take();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::uint32_t serverTime() const;

    Announcement announce_;
    CompositorToken askCompositor_;
    QPointer<QObject> window_;
    std::string token_;
    std::uint32_t lastInput_ = 0; ///< the X server's time of the last key or button
    QElapsedTimer sinceInput_;
};

} // namespace kestrel::linux_shell
