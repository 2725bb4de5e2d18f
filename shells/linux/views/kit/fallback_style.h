#pragma once
// The style of what the toolkit draws by itself - menus, scroll bars, tooltips, its file dialog -
// where no desktop and no user has chosen one: the toolkit's built-in style, with the looks of this
// program's own controls. The application owns it.

#include <QProxyStyle>

#include <functional>

namespace kestrel::linux_shell {

class FallbackStyle final : public QProxyStyle {
    Q_OBJECT

  public:
    /// `isCompositing` says whether translucent windows are blended: menus have soft corners then,
    /// and cut ones otherwise.
    explicit FallbackStyle(std::function<bool()> isCompositing);

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    void polish(QPalette& palette) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                         SubControl subControl, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override;

  private:
    std::function<bool()> isCompositing_;
};

} // namespace kestrel::linux_shell
