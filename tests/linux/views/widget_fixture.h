#pragma once
// What the tests of the settings widgets share: an item store over fakes and the event loop.

#include "shells/linux/views/item_editor_form.h"
#include "shells/linux/views/settings_list.h"
#include "shells/linux/views/settings_widget.h"
#include "tests/fakes/store_fixture.h"
#include "tests/linux/views/events.h"

#include <QAccessible>
#include <QApplication>

#include <memory>
#include <string>
#include <vector>

namespace kestrel::linux_shell {

/// Runs all that is queued, redraws and deletions included.
inline void turnEventLoop() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

inline QString accessibleName(QWidget& widget) {
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&widget);
    return interface == nullptr ? QString() : interface->text(QAccessible::Name);
}

inline QAccessible::Role accessibleRole(QWidget& widget) {
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&widget);
    return interface == nullptr ? QAccessible::NoRole : interface->role();
}

/// A settings window's content with the items "First", "Second" and "Third".
class SettingsFixture : public tests::ThreeItemsFixture {
  protected:
    tests::FakeOpenPanel openPanel;
    std::vector<std::string> iconsAsked;
    FileIconSource icons{[this](const std::string& path) {
        iconsAsked.push_back(path);
        return QIcon();
    }};
    std::unique_ptr<SettingsWidget> widget;

    void SetUp() override {
        ThreeItemsFixture::SetUp();
        show();
    }

    void show() {
        widget = std::make_unique<SettingsWidget>(
            std::make_unique<SettingsView>(manager, clock, openPanel), icons);
        widget->resize(520, 420);
        widget->move(300, 300); // away from where the pointer rests
        widget->show();
        widget->activateWindow();
        turnEventLoop();
    }

    SettingsView& view() { return widget->view(); }
    SettingsList& list() { return widget->list(); }
    QPoint middleOf(int row) { return list().rowRect(row).center(); }

    void clickRow(int row) {
        click(*list().viewport(), middleOf(row));
        turnEventLoop();
    }

    /// A key for the window.
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        sendWindowKey(*widget, key, modifiers, text);
        turnEventLoop();
    }
};

} // namespace kestrel::linux_shell
