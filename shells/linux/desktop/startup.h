#pragma once
// What the starter of this process said about the start: a launcher of the desktop hands over
// what lets the new program's window come to the front. So such a start is a user's own doing,
// unlike one with the session.

#include <QString>
#include <QVariantMap>

namespace kestrel::linux_shell {

struct Startup {
    QString id;              ///< of the start-up notification protocol; empty without one
    QString activationToken; ///< of a Wayland compositor; empty without one

    bool isByHand() const { return !id.isEmpty() || !activationToken.isEmpty(); }

    /// As org.freedesktop.Application passes it on, without what is empty.
    QVariantMap platformData() const;

    /// The reverse, for data that any program may have made up: what is not a text, or longer than
    /// a thousand characters, is as good as absent.
    static Startup fromPlatformData(const QVariantMap& data);
};

/// Reads the environment. To be called before the application object is made, which takes it out of
/// there.
Startup startupOfThisProcess();

} // namespace kestrel::linux_shell
