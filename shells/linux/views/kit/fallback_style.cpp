#include "shells/linux/views/kit/fallback_style.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/desktop/appearance/popover_frame.h"
#include "shells/linux/views/kit/control_faces.h"
#include "shells/linux/views/kit/fallback_file_dialog.h"
#include "shells/linux/views/kit/fallback_menu.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QAbstractScrollArea>
#include <QFileDialog>
#include <QMenu>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <utility>

namespace kestrel::linux_shell {
namespace {

// All in pixels.
constexpr int scrollBarExtent = 12;
constexpr int scrollBarInset = 3;
constexpr int leastThumb = 28;
constexpr int menuPadding = 5;
constexpr int buttonPadding = 14;
constexpr int leastButtonWidth = 104;
constexpr int toolTipPadding = 6;
constexpr double toolTipRadius = 6;
constexpr double toolTipOutlineShare = 0.3; // of the text's colour
constexpr double highContrastOutlineShare = 0.8;

constexpr double frameOpacity = 0.2;
constexpr double toolHoverWash = 0.06;
constexpr double toolPressedWash = 0.12;

bool isOptionEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

bool isOptionHovered(const QStyleOption& option) {
    return isOptionEnabled(option) && option.state.testFlag(QStyle::State_MouseOver);
}

bool isOptionDown(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Sunken) || option.state.testFlag(QStyle::State_On);
}

bool showsOptionFocus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus) &&
           option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

bool isTranslucent(const QWidget* widget) {
    return widget != nullptr && widget->testAttribute(Qt::WA_TranslucentBackground);
}

ButtonFace faceOf(const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return {.isProminent =
                button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton),
            .isEnabled = isOptionEnabled(option),
            .isHovered = isOptionHovered(option),
            .isDown = isOptionDown(option),
            .showsFocus = showsOptionFocus(option)};
}

void drawToolButton(QPainter& painter, const QStyleOption& option) {
    if (isOptionDown(option) || isOptionHovered(option))
        fillRounded(
            painter, option.rect, controlRadius,
            washColor(option.palette, isOptionDown(option) ? toolPressedWash : toolHoverWash));
    if (showsOptionFocus(option))
        drawFocusRing(painter, option.rect, controlRadius, option.palette);
}

// Around lists, which fill their corners.
void drawFrame(QPainter& painter, const QStyleOption& option) {
    painter.save();
    painter.setPen(outlineColor(option.palette, frameOpacity));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5));
    painter.restore();
}

void drawToolTip(QPainter& painter, const QStyleOption& option) {
    const QColor background = option.palette.color(QPalette::Active, QPalette::ToolTipBase);
    const QColor text = option.palette.color(QPalette::Active, QPalette::ToolTipText);
    fillRounded(painter, option.rect, toolTipRadius, background);
    const double share =
        isHighContrast(option.palette) ? highContrastOutlineShare : toolTipOutlineShare;
    strokeRounded(painter, option.rect, toolTipRadius, mixed(background, text, share));
}

/// The background of what the bar scrolls.
QColor backgroundBehind(const QStyleOption& option, const QWidget* bar) {
    for (const QWidget* widget = bar; widget != nullptr; widget = widget->parentWidget()) {
        if (const auto* area = qobject_cast<const QAbstractScrollArea*>(widget)) {
            const QWidget* viewport = area->viewport();
            return viewport->palette().color(QPalette::Active, viewport->backgroundRole());
        }
    }
    return option.palette.color(QPalette::Active, QPalette::Window);
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar, const QRect& thumb,
                   const QWidget* widget) {
    painter.fillRect(bar.rect, backgroundBehind(bar, widget));
    if (bar.maximum <= bar.minimum)
        return;
    const bool isLit = isOptionHovered(bar) || bar.state.testFlag(QStyle::State_Sunken);
    const int inset = isLit ? scrollBarInset - 1 : scrollBarInset;
    const bool isUpright = bar.orientation == Qt::Vertical;
    const QRectF shape =
        isUpright ? thumb.adjusted(inset, 2, -inset, -2) : thumb.adjusted(2, inset, -2, -inset);
    fillRounded(painter, shape, std::min(shape.width(), shape.height()) / 2,
                fieldOutlineColor(bar.palette, isLit ? Pointer::over : Pointer::elsewhere));
}

/// The thumb of a bar without buttons at its ends.
QRect thumbOf(const QStyleOptionSlider& bar) {
    const bool isUpright = bar.orientation == Qt::Vertical;
    const int length = isUpright ? bar.rect.height() : bar.rect.width();
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    if (range <= 0)
        return bar.rect;
    const auto share = qint64(length) * bar.pageStep / (range + bar.pageStep);
    const int extent = std::min(length, std::max(leastThumb, static_cast<int>(share)));
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - extent, bar.upsideDown);
    const QRect& rect = bar.rect;
    return isUpright ? QRect(rect.left(), rect.top() + start, rect.width(), extent)
                     : QRect(rect.left() + start, rect.top(), extent, rect.height());
}

QRect partOfScrollBar(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    const QRect thumb = thumbOf(bar);
    const bool isUpright = bar.orientation == Qt::Vertical;
    QRect result;
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        result = thumb;
        break;
    case QStyle::SC_ScrollBarGroove:
        result = bar.rect;
        break;
    case QStyle::SC_ScrollBarSubPage:
        result = bar.rect;
        isUpright ? result.setBottom(thumb.top() - 1) : result.setRight(thumb.left() - 1);
        break;
    case QStyle::SC_ScrollBarAddPage:
        result = bar.rect;
        isUpright ? result.setTop(thumb.bottom() + 1) : result.setLeft(thumb.right() + 1);
        break;
    default: // there are no buttons
        return {};
    }
    return QStyle::visualRect(bar.direction, bar.rect, result);
}

void drawComboArrow(QPainter& painter, const QStyleOption& option, const QRect& area) {
    const QPointF middle = QRectF(area).center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colorFor(isOptionEnabled(option) ? style::ColorLevel::secondary
                                                         : style::ColorLevel::tertiaryLabel,
                                 option.palette),
                        1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QList<QPointF>{{middle.x() - 4, middle.y() - 2},
                                        {middle.x(), middle.y() + 2},
                                        {middle.x() + 4, middle.y() - 2}});
    painter.restore();
}

void drawHeader(QPainter& painter, const QStyleOption& option) {
    painter.fillRect(option.rect, option.palette.color(QPalette::Active, QPalette::Base));
    painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                     separatorColor(option.palette));
}

} // namespace

FallbackStyle::FallbackStyle(std::function<bool()> isCompositing)
    : QProxyStyle(QStringLiteral("fusion")), isCompositing_(std::move(isCompositing)) {}

// Before the window of a menu is made, which is when it must be known.
void FallbackStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    const bool hasCorners =
        qobject_cast<QMenu*>(widget) != nullptr || widget->inherits("QTipLabel");
    if (hasCorners && !widget->testAttribute(Qt::WA_WState_Created))
        widget->setAttribute(Qt::WA_TranslucentBackground, isCompositing_());
    if (auto* dialog = qobject_cast<QFileDialog*>(widget))
        fitFileList(*dialog);
}

// Of the toolkit's own colours, which hold where the desktop says none: tooltips are not yellow.
void FallbackStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    palette.setColor(QPalette::ToolTipBase, palette.color(QPalette::Active, QPalette::Base));
    palette.setColor(QPalette::ToolTipText, palette.color(QPalette::Active, QPalette::Text));
}

void FallbackStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    switch (element) {
    case PE_PanelMenu:
        popover_frame::paintBackground(*painter, option->rect, option->palette);
        return;
    case PE_FrameMenu: // part of the panel
        return;
    case PE_PanelButtonCommand:
        drawButtonFace(*painter, option->rect, option->palette, faceOf(*option));
        return;
    case PE_PanelButtonTool:
        drawToolButton(*painter, *option);
        return;
    case PE_FrameFocusRect: // buttons show a ring
        if (widget != nullptr && widget->inherits("QAbstractButton"))
            return;
        break;
    case PE_PanelLineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame != nullptr && frame->lineWidth > 0) {
            drawFieldFace(*painter, option->rect, option->palette,
                          {.isHovered = isOptionHovered(*option),
                           .hasFocus = option->state.testFlag(State_HasFocus)});
            return;
        }
        break;
    case PE_Frame:
        drawFrame(*painter, *option);
        return;
    case PE_PanelTipLabel:
        drawToolTip(*painter, *option);
        return;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void FallbackStyle::drawControl(ControlElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        item != nullptr && element == CE_MenuItem) {
        const bool shown = styleHint(SH_UnderlineShortcut, option, widget, nullptr) != 0;
        drawMenuItem(*painter, *item, shown ? MnemonicLines::shown : MnemonicLines::hidden);
        return;
    }
    if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        button != nullptr && element == CE_PushButtonLabel) {
        QStyleOptionButton label(*button);
        label.palette.setColor(QPalette::ButtonText,
                               buttonTitleColor(button->palette, faceOf(*button)));
        QProxyStyle::drawControl(element, &label, painter, widget);
        return;
    }
    if (element == CE_HeaderSection || element == CE_HeaderEmptyArea) {
        drawHeader(*painter, *option);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FallbackStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        bar != nullptr && control == CC_ScrollBar) {
        drawScrollBar(*painter, *bar, partOfScrollBar(*bar, SC_ScrollBarSlider), widget);
        return;
    }
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        combo != nullptr && control == CC_ComboBox && !combo->editable) {
        drawButtonFace(*painter, combo->rect, combo->palette, faceOf(*combo));
        drawComboArrow(*painter, *combo, subControlRect(control, option, SC_ComboBoxArrow, widget));
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect FallbackStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                    SubControl subControl, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    return bar != nullptr && control == CC_ScrollBar
               ? partOfScrollBar(*bar, subControl)
               : QProxyStyle::subControlRect(control, option, subControl, widget);
}

QSize FallbackStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                      const QSize& size, const QWidget* widget) const {
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        item != nullptr && type == CT_MenuItem)
        return menuItemSize(*item, size);
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_PushButton)
        result.setWidth(std::max(size.width() + 2 * buttonPadding, leastButtonWidth));
    if (type == CT_PushButton || type == CT_LineEdit || type == CT_ComboBox)
        result.setHeight(std::max(result.height(), controlHeight));
    return result;
}

int FallbackStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                               const QWidget* widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
        return scrollBarExtent;
    case PM_ScrollBarSliderMin:
        return leastThumb;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return menuPadding;
    case PM_MenuPanelWidth:
    case PM_ButtonDefaultIndicator:
        return 0;
    case PM_ToolTipLabelFrameWidth:
        return toolTipPadding;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FallbackStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* answer) const {
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_Menu_Mask:
    case SH_ToolTip_Mask: {
        auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(answer);
        if (mask == nullptr || option == nullptr || isTranslucent(widget))
            return 0;
        mask->region = popover_frame::shape(
            option->rect, hint == SH_Menu_Mask ? popover_frame::cornerRadius : toolTipRadius);
        return 1;
    }
    default:
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}

} // namespace kestrel::linux_shell
