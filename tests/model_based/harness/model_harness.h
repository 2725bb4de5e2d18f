#pragma once
// Runs the program's store and views, over fakes, side by side with the reference model: each
// operation is applied to both, then everything that can be observed of them is compared.

#include "tests/fakes/store_fixture.h"
#include "tests/model_based/generators/generators.h"
#include "tests/model_based/reference/reference_views.h"
#include "views/popover/menu_popover_view.h"
#include "views/settings/settings_view.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::tests {

/// What is done, and three numbers that choose the row, the text and so on. Every operation means
/// something in every state, so that any part of a history is a history.
struct Operation {
    std::uint32_t action = 0;
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::uint32_t c = 0;
};

class ModelHarness {
  public:
    ModelHarness();
    ModelHarness(const ModelHarness&) = delete;
    ModelHarness& operator=(const ModelHarness&) = delete;
    ~ModelHarness();

    static std::size_t actionCount();
    static const char* nameOf(std::size_t action);

    /// How often an action is to be chosen, relative to the others.
    static int weightOf(std::size_t action);

    /// Does it to both sides. What differs then, in words; nothing when all is the same.
    std::optional<std::string> apply(const Operation& operation);

    /// What the operations did, in words; kept when `recordsSteps` is true.
    bool recordsSteps = false;
    std::string steps;

  private:
    struct Entry;
    static const std::vector<Entry>& entries();

    // The store and what is outside of the program (store_operations.cpp).
    void load(const Operation& operation);
    void save(const Operation& operation);
    void updateKnown(const Operation& operation);
    void updateUnknown(const Operation& operation);
    void appendDuplicate(const Operation& operation);
    void outsideList(const Operation& operation);
    void outsideInvalidList(const Operation& operation);
    void localBytes(const Operation& operation);
    void account(const Operation& operation);
    void cloudStore(const Operation& operation);
    void localWriteFails(const Operation& operation);
    void cloudWriteFails(const Operation& operation);
    void turn(const Operation& operation);
    void allTurns(const Operation& operation);
    void restart(const Operation& operation);

    // The settings window (settings_operations.cpp).
    void openWindow(const Operation& operation);
    void closeWindow(const Operation& operation);
    void selectRow(const Operation& operation);
    void clearSelection(const Operation& operation);
    void selectUnknown(const Operation& operation);
    void pressToolbar(const Operation& operation);
    void intent(const Operation& operation);
    void rowMenu(const Operation& operation);
    void keepRow(const Operation& operation);
    void keptRowMenu(const Operation& operation);
    void doubleClick(const Operation& operation);
    void deleteRows(const Operation& operation);
    void moveRows(const Operation& operation);
    void key(const Operation& operation);
    void stepInSettings(const Operation& operation);
    void typeInSettings(const Operation& operation);

    // Its sheets (form_operations.cpp).
    void presentSheet(const Operation& operation);
    void setField(const Operation& operation);
    void browse(const Operation& operation);
    void commit(const Operation& operation);
    void cancel(const Operation& operation);

    // The popover (popover_operations.cpp).
    void pointer(const Operation& operation);
    void step(const Operation& operation);
    void activate(const Operation& operation);
    void tap(const Operation& operation);
    void keepTap(const Operation& operation);
    void keptTap(const Operation& operation);
    void typeInPopover(const Operation& operation);
    void resetHighlight(const Operation& operation);
    void focusFooter(const Operation& operation);
    void footer(const Operation& operation);

    void recordStep(const std::string& text);
    void start();
    void stop();
    void setCloud(const std::optional<StoredValue>& value, bool notified);
    void choose(std::size_t button);
    void dropForm();
    void formClosed();

    // What differs (comparison.cpp).
    using Difference = std::optional<std::string>;
    Difference differenceOfStore();
    Difference differenceOfCalls();
    Difference differenceOfSettings();
    Difference differenceOfRows();
    Difference differenceOfForm();
    Difference differenceOfPopover();
    Difference missingSignal();

    CallLog log_;
    FakeMainQueue mainQueue_;
    FakeUserDefaults defaults_{log_};
    FakeCloud cloud_{log_};
    FakeClock clock_;
    FakeWorkspace workspace_{log_};
    FakeTerminal terminal_{log_};
    FakeOpenPanel openPanel_;
    ItemsManagerPorts ports_{mainQueue_, defaults_, cloud_, clock_, workspace_, terminal_};
    std::unique_ptr<ItemsManager> manager_;
    std::unique_ptr<MenuPopoverView> popover_;
    std::unique_ptr<SettingsView> settings_;
    std::unique_ptr<AddEditItemView> form_;
    std::optional<ItemRow> keptRow_;
    std::function<void()> keptTap_;
    Subscription itemsSignal_;
    Subscription settingsSignal_;
    Subscription formSignal_;
    Subscription popoverSignal_;
    std::vector<std::string> listBefore_;
    int settingsSignals_ = 0;
    int formSignals_ = 0;
    int popoverSignals_ = 0;
    int closes_ = 0;
    int settingsClicks_ = 0;
    int quitClicks_ = 0;

    ReferenceStore reference_;
    ReferencePopover referencePopover_;
    std::optional<ReferenceSettings> referenceSettings_;
    std::optional<ReferenceForm> referenceForm_;
    std::optional<ReferenceItem> referenceKeptRow_;
    bool keptRowIsOfThisWindow_ = false;
    std::optional<ReferenceItem> referenceKeptTap_;
    int referenceSettingsClicks_ = 0;
    int referenceQuitClicks_ = 0;
    std::optional<ReferenceSettings> settingsBefore_;
    std::optional<ReferenceForm> formBefore_;
    std::optional<std::size_t> hoveredBefore_;
    bool dismissed_ = false;
    std::string fault_; ///< what an operation itself has found
};

ReferenceItem referenceItem(const LauncherItem& item);
LauncherItem realItem(const ReferenceItem& item);

} // namespace kestrel::tests
