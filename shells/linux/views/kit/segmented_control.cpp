#include "shells/linux/views/kit/segmented_control.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/accessible_role.h"
#include "shells/linux/views/kit/control_button.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"

#include <QEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>
#include <numeric>

namespace kestrel::linux_shell {

namespace {

constexpr int trackPadding = 2;  // pixels between the track's edge and the chosen segment
constexpr int titlePadding = 10; // pixels beside a title
constexpr int leastPadding = 8;  // the same where space is short
constexpr style::Font plainFont = style::body;
constexpr style::Font chosenFont = style::body.withWeight(FontWeight::medium);

/// Each gets what it needs as long as it needs no more than its share of the space.
std::vector<int> sharedEvenly(std::vector<int> needs, int space) {
    std::vector<int*> smallestFirst;
    smallestFirst.reserve(needs.size());
    for (int& need : needs)
        smallestFirst.push_back(&need);
    std::ranges::sort(smallestFirst, {}, [](const int* need) { return *need; });
    int sharers = static_cast<int>(needs.size());
    for (int* const need : smallestFirst) {
        *need = std::min(*need, space / sharers);
        space -= *need;
        --sharers;
    }
    return needs;
}

} // namespace

class SegmentedControl::Segment final : public ControlButton {
  public:
    Segment(const QString& title, SegmentedControl& control)
        : ControlButton(&control), control_(control) {
        setText(title);
        setCheckable(true);
        setAutoExclusive(true);
        setReturnKey(ReturnKey::leftToOthers);
    }

    int titleWidth() const { return QFontMetrics(fontFor(chosenFont)).horizontalAdvance(text()); }

  protected:
    // The toolkit's own steps need a neighbour in the arrow's direction, so that up and down lead
    // nowhere.
    void keyPressEvent(QKeyEvent* event) override {
        const int step = stepOf(*event);
        if (step == 0)
            ControlButton::keyPressEvent(event);
        else
            control_.chooseNext(step);
    }

    // A press that is let go elsewhere chooses nothing and leaves the keys where they are.
    void mouseReleaseEvent(QMouseEvent* event) override {
        ControlButton::mouseReleaseEvent(event);
        if (isChecked())
            setFocus(Qt::MouseFocusReason);
    }

    void resizeEvent(QResizeEvent* event) override {
        ControlButton::resizeEvent(event);
        setToolTip(titleWidth() > width() - 2 * leastPadding ? text() : QString());
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const double radius = controlRadius - 1.5;
        if (isChecked())
            paintThumb(painter, radius);
        else if (isDown() || showsHover())
            fillRounded(painter, rect(), radius, washColor(palette(), isDown() ? 0.1 : 0.05));
        if (showsFocus())
            drawFocusRing(painter, rect(), radius, palette());
        const QFont font = fontFor(isChecked() ? chosenFont : plainFont);
        painter.setFont(font);
        painter.setPen(
            colorFor(isEnabled() ? style::ColorLevel::primary : style::ColorLevel::tertiaryLabel,
                     palette()));
        const QString title =
            QFontMetrics(font).elidedText(text(), Qt::ElideRight, width() - 2 * leastPadding);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, title);
    }

  private:
    int stepOf(const QKeyEvent& event) const {
        const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        switch (isPlain ? event.key() : 0) {
        case Qt::Key_Up:
            return -1;
        case Qt::Key_Down:
            return 1;
        case Qt::Key_Left:
            return isRightToLeft() ? 1 : -1;
        case Qt::Key_Right:
            return isRightToLeft() ? -1 : 1;
        default:
            return 0;
        }
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

    SegmentedControl& control_;
};

SegmentedControl::SegmentedControl(const QStringList& titles, const QString& name, QWidget* parent)
    : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFixedHeight(controlHeight);
    for (const QString& title : titles) {
        auto* segment = new Segment(title, *this);
        const int index = static_cast<int>(segments_.size());
        // Not the click: assistive technology checks a segment without one.
        connect(segment, &QAbstractButton::toggled, this, [this, index](bool checked) {
            update();
            stopTabAtTheChosen();
            if (checked)
                Q_EMIT chosen(index);
        });
        segments_.push_back(segment);
    }
    stopTabAtTheChosen();
}

QAbstractButton& SegmentedControl::segment(int index) const {
    return *segments_[static_cast<std::size_t>(index)];
}

// The toolkit does this only once a segment has the focus.
void SegmentedControl::stopTabAtTheChosen() {
    for (Segment* const segment : segments_)
        segment->setFocusPolicy(segment->isChecked() ? Qt::StrongFocus : Qt::NoFocus);
    const int index = currentIndex();
    setFocusProxy(index < 0 ? nullptr : &segment(index));
}

int SegmentedControl::currentIndex() const {
    for (std::size_t index = 0; index < segments_.size(); ++index)
        if (segments_[index]->isChecked())
            return static_cast<int>(index);
    return -1;
}

void SegmentedControl::chooseNext(int step) {
    const int next = currentIndex() + step;
    if (next < 0 || next >= static_cast<int>(segments_.size()))
        return;
    segment(next).setChecked(true);
    segment(next).setFocus(step < 0 ? Qt::BacktabFocusReason : Qt::TabFocusReason);
}

void SegmentedControl::setCurrentIndex(int index) {
    const QSignalBlocker nobodyChose(segment(index));
    segment(index).setChecked(true);
    stopTabAtTheChosen();
    update();
}

int SegmentedControl::widthWithPadding(int padding) const {
    const int count = static_cast<int>(segments_.size());
    int width = (count + 1) * trackPadding;
    for (const Segment* const segment : segments_)
        width += segment->titleWidth() + 2 * padding;
    return width;
}

QSize SegmentedControl::sizeHint() const { return {widthWithPadding(titlePadding), controlHeight}; }

QSize SegmentedControl::minimumSizeHint() const {
    const int count = static_cast<int>(segments_.size());
    return {(count + 1) * trackPadding + count * 4 * leastPadding, controlHeight};
}

std::vector<int> SegmentedControl::segmentWidths() const {
    const int count = static_cast<int>(segments_.size());
    const int space = width() - (count + 1) * trackPadding;
    std::vector<int> needs;
    needs.reserve(segments_.size());
    for (const Segment* const segment : segments_)
        needs.push_back(segment->titleWidth() + 2 * leastPadding);
    std::vector<int> widths(needs.size(), space / count);
    const int left = space - std::accumulate(needs.begin(), needs.end(), 0);
    if (left < 0)
        return sharedEvenly(needs, space);
    if (std::ranges::max(needs) > space / count)
        std::ranges::transform(needs, widths.begin(),
                               [&](int need) { return need + left / count; });
    return widths;
}

void SegmentedControl::layOut() {
    const std::vector<int> widths = segmentWidths();
    // What does not divide evenly goes to both ends of the track.
    const int used = std::accumulate(widths.begin(), widths.end(), 0) +
                     (static_cast<int>(widths.size()) - 1) * trackPadding;
    int x = (width() - used) / 2;
    for (std::size_t index = 0; index < segments_.size(); ++index) {
        const QRect place(x, trackPadding, widths[index], height() - 2 * trackPadding);
        segments_[index]->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
        x += widths[index] + trackPadding;
    }
    update();
}

void SegmentedControl::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::LayoutDirectionChange) {
        updateGeometry();
        layOut();
    }
}

void SegmentedControl::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void SegmentedControl::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    fillRounded(painter, rect(), controlRadius, washColor(palette(), 0.08));
    strokeRounded(painter, rect(), controlRadius, outlineColor(palette(), 0.06));
    // A line stands between two segments of which neither is the chosen one.
    for (std::size_t index = 1; index < segments_.size(); ++index) {
        const Segment& before = *segments_[index - 1];
        const Segment& after = *segments_[index];
        if (!before.isChecked() && !after.isChecked()) {
            const int x = std::max(before.x(), after.x()) - trackPadding / 2;
            painter.fillRect(x, height() / 4, 1, height() / 2, separatorColor(palette()));
        }
    }
}

} // namespace kestrel::linux_shell
