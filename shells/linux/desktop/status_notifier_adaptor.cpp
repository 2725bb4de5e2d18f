#include "shells/linux/desktop/status_notifier_adaptor.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace kestrel::linux_shell {

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierImage& image) {
    argument.beginStructure();
    argument << image.width << image.height << image.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierImage& image) {
    argument.beginStructure();
    argument >> image.width >> image.height >> image.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.images << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.images >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

StatusNotifierImage statusNotifierImage(const QImage& image) {
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    QByteArray pixels;
    pixels.reserve(argb.sizeInBytes());
    for (int y = 0; y < argb.height(); ++y) {
        const auto* row = reinterpret_cast<const quint32*>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            const quint32 pixel = qToBigEndian(row[x]);
            pixels.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return {argb.width(), argb.height(), pixels};
}

StatusNotifierAdaptor::StatusNotifierAdaptor(StatusNotifierItem& item)
    : QDBusAbstractAdaptor(&item), item_(item) {
    qDBusRegisterMetaType<StatusNotifierImage>();
    qDBusRegisterMetaType<StatusNotifierImages>();
    qDBusRegisterMetaType<StatusNotifierToolTip>();
    connect(&item, &StatusNotifierItem::iconChanged, this, [this] {
        Q_EMIT NewIcon();
        Q_EMIT NewStatus(status());
    });
}

QString StatusNotifierAdaptor::iconName() const {
    Q_EMIT item_.shown();
    return item_.themeName();
}

StatusNotifierImages StatusNotifierAdaptor::iconPixmap() const {
    Q_EMIT item_.shown();
    StatusNotifierImages images;
    for (const auto& image : item_.images())
        images.append(statusNotifierImage(image));
    return images;
}

StatusNotifierToolTip StatusNotifierAdaptor::toolTip() const {
    return {.iconName = {}, .images = {}, .title = title(), .description = {}};
}

void StatusNotifierAdaptor::Activate(int x, int y) { Q_EMIT item_.activated(QPoint(x, y)); }

void StatusNotifierAdaptor::ContextMenu(int x, int y) { Q_EMIT item_.menuWanted(QPoint(x, y)); }

} // namespace kestrel::linux_shell
