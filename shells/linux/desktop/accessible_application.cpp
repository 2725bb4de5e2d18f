#include "shells/linux/desktop/accessible_application.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QGuiApplication>
#include <QWindow>

namespace kestrel::linux_shell {
namespace {

class AccessibleApplication final : public QAccessibleObject {
  public:
    explicit AccessibleApplication(QObject* application) : QAccessibleObject(application) {}

    QWindow* window() const override { return QGuiApplication::focusWindow(); }
    QAccessibleInterface* parent() const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::Application; }
    QAccessible::State state() const override { return {}; }

    QString text(QAccessible::Text text) const override {
        return text == QAccessible::Name ? QGuiApplication::applicationName() : QString();
    }

    int childCount() const override { return static_cast<int>(windows().size()); }
    QAccessibleInterface* child(int index) const override { return windows().value(index); }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto all = windows();
        for (int i = 0; i < all.size(); ++i)
            if (all[i] == child)
                return i;
        return -1;
    }

    QAccessibleInterface* focusChild() const override {
        auto* focused = QGuiApplication::focusWindow();
        return focused != nullptr ? focused->accessibleRoot() : nullptr;
    }

  private:
    static QList<QAccessibleInterface*> windows() {
        QList<QAccessibleInterface*> found;
        const auto all = QGuiApplication::topLevelWindows();
        for (auto* window : all) {
            if (window->type() == Qt::ToolTip)
                continue;
            if (auto* root = window->accessibleRoot())
                found.append(root);
        }
        return found;
    }
};

QAccessibleInterface* makeApplication(const QString& className, QObject* object) {
    return className == QLatin1String("QApplication") ? new AccessibleApplication(object) : nullptr;
}

} // namespace

void installAccessibleApplication() { QAccessible::installFactory(makeApplication); }

} // namespace kestrel::linux_shell
