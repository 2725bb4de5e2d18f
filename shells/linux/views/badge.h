#pragma once
// A short text on a faint rounded background, drawn by the widget that carries it.

#include <QPalette>
#include <QPoint>
#include <QSize>
#include <QString>

class QPainter;

namespace kestrel::linux_shell {

QSize badgeSize(const QString& text);
void drawBadge(QPainter& painter, QPoint topLeft, const QString& text, const QPalette& palette);

} // namespace kestrel::linux_shell
