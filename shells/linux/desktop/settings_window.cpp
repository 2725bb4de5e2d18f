#include "shells/linux/desktop/settings_window.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

#include <utility>

namespace kestrel::linux_shell {
namespace {

QPoint centered(QSize size) {
    const auto* screen = QGuiApplication::screenAt(QCursor::pos());
    const QRect area =
        (screen != nullptr ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize free = area.size() - size;
    return area.topLeft() + QPoint(free.width() / 2, free.height() / 2);
}

} // namespace

class SettingsWindow::Frame final : public QWidget {
  public:
    Frame(std::unique_ptr<QWidget> content, std::function<void()> onClosed)
        : content_(content.release()), onClosed_(std::move(onClosed)) {
        content_->setParent(this);
        content_->show();
        setFocusProxy(content_);
        setMinimumSize(content_->minimumSizeHint().expandedTo(content_->minimumSize()));
    }

    /// Its closing is reported to nobody from now on.
    void leaveWindow() { onClosed_ = nullptr; }

  protected:
    void closeEvent(QCloseEvent* event) override {
        event->accept();
        if (const auto onClosed = onClosed_)
            onClosed();
    }
    // A key that the content has no use for; a sheet leaves over none.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Close))
            close();
        else
            QWidget::keyPressEvent(event);
    }
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        content_->setGeometry(rect());
    }

  private:
    QWidget* content_;
    std::function<void()> onClosed_;
};

void SettingsWindow::DeleteLater::operator()(Frame* frame) const {
    frame->leaveWindow();
    frame->hide();
    frame->deleteLater();
}

SettingsWindow::SettingsWindow(std::unique_ptr<QWidget> content, QSize contentSize,
                               const QIcon& icon, std::function<void()> onClosed)
    : frame_(new Frame(std::move(content), std::move(onClosed))) {
    frame_->setWindowTitle(QStringLiteral("Kestrel"));
    frame_->setWindowRole(QStringLiteral("settings"));
    frame_->setWindowIcon(icon);
    frame_->resize(contentSize);
    frame_->move(centered(contentSize));
    frame_->winId();
}

QWidget& SettingsWindow::widget() { return *frame_; }

void SettingsWindow::bringForward() {
    frame_->setWindowState(frame_->windowState() & ~Qt::WindowMinimized);
    frame_->show();
    frame_->raise();
    frame_->activateWindow();
}

} // namespace kestrel::linux_shell
