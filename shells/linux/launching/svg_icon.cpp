#include "shells/linux/launching/svg_icon.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <utility>

namespace kestrel::linux_shell {
namespace {

class SvgIconEngine final : public QIconEngine {
  public:
    explicit SvgIconEngine(QString path) : path_(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const QString key =
            QStringLiteral("%1 %2x%3").arg(path_).arg(size.width()).arg(size.height());
        QPixmap pixmap;
        if (!QPixmapCache::find(key, &pixmap)) {
            pixmap = draw(size);
            QPixmapCache::insert(key, pixmap);
        }
        return pixmap;
    }

    QIconEngine* clone() const override { return new SvgIconEngine(path_); }

  private:
    QPixmap draw(QSize size) const {
        QSvgRenderer renderer(path_);
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
        painter.end();
        return QPixmap::fromImage(std::move(image));
    }

    QString path_;
};

} // namespace

QIcon svgIcon(const QString& path) { return QIcon(new SvgIconEngine(path)); }

} // namespace kestrel::linux_shell
