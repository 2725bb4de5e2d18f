#pragma once
// How the popover looks around its content: corners, hairline and shadow, in the desktop's colours.

#include <QPainter>
#include <QPalette>
#include <QRect>
#include <QRegion>
#include <QWidget>

namespace kestrel::linux_shell::popover_frame {

/// The space in device-independent pixels that the shadow takes on each side.
inline constexpr int shadowMargin = 20;

/// The shadow of a popover whose content fills `content`.
void paintShadow(QPainter& painter, const QRect& content);

/// The ground that the content stands on.
void paintBackground(QPainter& painter, const QRect& content, const QPalette& palette);

/// The part of `content` inside the rounded corners.
QRegion shape(const QRect& content);

/// Draws the hairline along its own edge, above what it is laid over; clicks pass through it.
class Hairline final : public QWidget {
  public:
    explicit Hairline(QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrel::linux_shell::popover_frame
