#pragma once
// The pictures of the status icon: the core's image in the sizes and colours that panels want.

#include "platform/images.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QList>

#include <functional>
#include <memory>

namespace kestrel::linux_shell {

/// Draws an image as a square of so many pixels.
using IconRenderer = std::function<QImage(const Image&, int pixels)>;

/// Main thread only.
class StatusIconImages {
  public:
    explicit StatusIconImages(IconRenderer renderer) : renderer_(std::move(renderer)) {}

    void setImage(std::shared_ptr<Image> image) { image_ = std::move(image); }
    void setIsTemplate(bool isTemplate) { isTemplate_ = isTemplate; }

    bool isEmpty() const { return image_ == nullptr; }
    bool isTemplate() const { return isTemplate_; }

    /// In all the sizes that panels show icons at; a template in `color`, which others ignore. None
    /// without an image.
    QList<QImage> drawn(const QColor& color) const;

  private:
    QImage drawn(int pixels, const QColor& color) const;

    IconRenderer renderer_;
    std::shared_ptr<Image> image_;
    bool isTemplate_ = false;
};

/// One icon of several sizes.
QIcon iconOf(const QList<QImage>& images);

} // namespace kestrel::linux_shell
