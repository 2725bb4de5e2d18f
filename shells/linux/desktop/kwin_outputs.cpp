#include "shells/linux/desktop/kwin_outputs.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>

#include <algorithm>

namespace kestrel::linux_shell {
namespace {

QRect bounds(const QList<KWinOutput>& outputs) {
    QRect all;
    for (const KWinOutput& output : outputs)
        all |= output.geometry;
    return all;
}

/// How many pixels wide the X server's screens are together.
double serverWidth() {
    double right = 0;
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens) {
        const QRect rect = screen->geometry();
        right = std::max(right, rect.left() + rect.width() * screen->devicePixelRatio());
    }
    return right;
}

} // namespace

QList<KWinOutput> kwinOutputs(const QString& supportInformation) {
    static const QRegularExpression output(
        QStringLiteral(R"(^Geometry: (-?\d+),(-?\d+),(\d+)x(\d+)\nScale: (\d+(?:\.\d+)?)$)"),
        QRegularExpression::MultilineOption);
    QList<KWinOutput> outputs;
    auto matches = output.globalMatch(supportInformation);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const auto number = [&match](int group) { return match.captured(group).toInt(); };
        const KWinOutput found{{number(1), number(2), number(3), number(4)},
                               match.captured(5).toDouble()};
        if (!found.geometry.isEmpty() && found.scale > 0)
            outputs.append(found);
    }
    return outputs;
}

std::optional<QPoint> placeOnOutputs(QPoint place, const QList<KWinOutput>& outputs, double scale) {
    for (const KWinOutput& output : outputs) {
        const QPointF inSession = QPointF(place) / output.scale;
        if (QRectF(output.geometry).contains(inSession))
            return (inSession * scale).toPoint();
    }
    return std::nullopt;
}

KWinOutputs::KWinOutputs(const QDBusConnection& bus) : bus_(bus) {
    ask();
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &KWinOutputs::ask);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &KWinOutputs::ask);
    if (const auto* screen = QGuiApplication::primaryScreen())
        connect(screen, &QScreen::geometryChanged, this, &KWinOutputs::ask);
}

QPoint KWinOutputs::onServer(QPoint place) const {
    const QRect session = bounds(outputs_);
    if (session.isEmpty())
        return place;
    return placeOnOutputs(place, outputs_, serverWidth() / (session.left() + session.width()))
        .value_or(place);
}

// The scale of an output is in no other place where an X11 program could read it.
void KWinOutputs::ask() {
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.KWin"), QStringLiteral("/KWin"), QStringLiteral("org.kde.KWin"),
        QStringLiteral("supportInformation"));
    call.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QString> reply = *answer;
        if (!reply.isError())
            outputs_ = kwinOutputs(reply.value());
    });
}

} // namespace kestrel::linux_shell
