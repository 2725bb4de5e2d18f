#include "shells/linux/views/kit/segmented_control.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/accessible_role.h"
#include "shells/linux/views/kit/control_button.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>

namespace kestrel::linux_shell {

namespace {

constexpr int trackPadding = 2;  // pixels between the track's edge and the chosen segment
constexpr int titlePadding = 10; // pixels beside a title
constexpr style::Font plainFont = style::body;
constexpr style::Font chosenFont = style::body.withWeight(FontWeight::medium);

class Segment : public ControlButton {
  public:
    Segment(const QString& title, QWidget* parent) : ControlButton(parent) {
        setText(title);
        setCheckable(true);
        setAutoExclusive(true);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }

    QSize sizeHint() const override { return sizeWithPadding(titlePadding); }

    /// All segments are as wide while every title fits; then the long ones take from the short.
    QSize minimumSizeHint() const override { return sizeWithPadding(titlePadding / 2); }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const double radius = controlRadius - 1.5;
        if (isChecked())
            paintThumb(painter, radius);
        else if (isDown() || showsHover())
            fillRounded(painter, rect(), radius, washColor(palette(), isDown() ? 0.1 : 0.05));
        if (showsFocus())
            drawFocusRing(painter, rect(), radius, palette());
        painter.setFont(fontFor(isChecked() ? chosenFont : plainFont));
        painter.setPen(
            colorFor(isEnabled() ? style::ColorLevel::primary : style::ColorLevel::tertiaryLabel,
                     palette()));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    }

  private:
    QSize sizeWithPadding(int padding) const {
        const int title = QFontMetrics(fontFor(chosenFont)).horizontalAdvance(text());
        return {title + 2 * padding, controlHeight - 2 * trackPadding};
    }

    void paintThumb(QPainter& painter, double radius) const {
        const QColor text = colorFor(style::ColorLevel::primary, palette());
        const QColor background = palette().color(QPalette::Active, QPalette::Window);
        const QColor thumb = isDark(palette()) ? mixed(background, text, 0.27) : QColor(Qt::white);
        fillRounded(painter, QRectF(rect()).translated(0, 0.75), radius, QColor(0, 0, 0, 40));
        fillRounded(painter, rect(), radius, thumb);
        strokeRounded(painter, rect(), radius,
                      isHighContrast(palette()) ? text
                                                : QColor(0, 0, 0, isDark(palette()) ? 60 : 28));
    }
};

} // namespace

SegmentedControl::SegmentedControl(const QStringList& titles, const QString& name, QWidget* parent)
    : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(name);
    setFixedHeight(controlHeight);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(trackPadding, trackPadding, trackPadding, trackPadding);
    layout->setSpacing(trackPadding);
    for (const QString& title : titles) {
        auto* segment = new Segment(title, this);
        const int index = static_cast<int>(segments_.size());
        // Not the click: assistive technology checks a segment without one.
        connect(segment, &QAbstractButton::toggled, this, [this, index](bool checked) {
            update();
            if (checked)
                Q_EMIT chosen(index);
        });
        layout->addWidget(segment, 1);
        segments_.push_back(segment);
    }
}

int SegmentedControl::currentIndex() const {
    for (std::size_t index = 0; index < segments_.size(); ++index)
        if (segments_[index]->isChecked())
            return static_cast<int>(index);
    return -1;
}

void SegmentedControl::setCurrentIndex(int index) {
    const QSignalBlocker nobodyChose(segment(index));
    segment(index).setChecked(true);
    update();
}

void SegmentedControl::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    fillRounded(painter, rect(), controlRadius, washColor(palette(), 0.08));
    strokeRounded(painter, rect(), controlRadius, outlineColor(palette(), 0.06));
    // A line stands between two segments of which neither is the chosen one.
    for (std::size_t index = 1; index < segments_.size(); ++index) {
        if (!segments_[index - 1]->isChecked() && !segments_[index]->isChecked()) {
            const int right = std::max(segments_[index - 1]->x(), segments_[index]->x());
            painter.fillRect(right - trackPadding / 2, height() / 4, 1, height() / 2,
                             separatorColor(palette()));
        }
    }
}

} // namespace kestrel::linux_shell
