#pragma once
// The outputs of Plasma's compositor. Its panel tells places in their pixels, of which the X server
// inside the Wayland session knows nothing: that server may have one pixel where an output has two.

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QRect>

#include <optional>

namespace kestrel::linux_shell {

struct KWinOutput {
    QRect geometry; ///< in the units of the session
    double scale = 1;
};

/// The outputs that the compositor's report of itself lists, in its order; none of a text that is
/// no such report.
QList<KWinOutput> kwinOutputs(const QString& supportInformation);

/// A place in pixels of the outputs, in the units of the session times `scale`; nothing when it is
/// on none of them.
std::optional<QPoint> placeOnOutputs(QPoint place, const QList<KWinOutput>& outputs, double scale);

/// Main thread only.
class KWinOutputs final : public QObject {
    Q_OBJECT

  public:
    /// Asks for the outputs, and again when the screens change; nothing waits for the answer.
    explicit KWinOutputs(const QDBusConnection& bus);

    /// A place in pixels of the outputs in those of the X server; unchanged as long as nothing is
    /// known of the outputs.
    QPoint onServer(QPoint place) const;

  private:
    void ask();

    QDBusConnection bus_;
    QList<KWinOutput> outputs_;
};

} // namespace kestrel::linux_shell
