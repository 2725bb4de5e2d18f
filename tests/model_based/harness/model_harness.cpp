#include "tests/model_based/harness/model_harness.h"

#include <chrono>
#include <stdexcept>

namespace kestrel::tests {

ReferenceItem referenceItem(const LauncherItem& item) {
    return {item.id.toString(), item.title, std::string(rawValue(item.type)), item.path,
            item.command};
}

LauncherItem realItem(const ReferenceItem& item) {
    const auto id = Uuid::parse(item.id);
    const auto type = itemTypeFromRawValue(item.type);
    if (!id || !type)
        throw std::logic_error("a generated item has no such id or type");
    return {*id, item.title, *type, item.path, item.command};
}

struct ModelHarness::Entry {
    const char* name;
    int weight;
    void (ModelHarness::*run)(const Operation&);
};

const std::vector<ModelHarness::Entry>& ModelHarness::entries() {
    static const std::vector<Entry> table{
        {"load", 2, &ModelHarness::load},
        {"save", 2, &ModelHarness::save},
        {"updateKnown", 3, &ModelHarness::updateKnown},
        {"updateUnknown", 3, &ModelHarness::updateUnknown},
        {"appendDuplicate", 3, &ModelHarness::appendDuplicate},
        {"outsideList", 5, &ModelHarness::outsideList},
        {"outsideInvalidList", 3, &ModelHarness::outsideInvalidList},
        {"localBytes", 2, &ModelHarness::localBytes},
        {"account", 3, &ModelHarness::account},
        {"cloudStore", 2, &ModelHarness::cloudStore},
        {"localWriteFails", 1, &ModelHarness::localWriteFails},
        {"cloudWriteFails", 1, &ModelHarness::cloudWriteFails},
        {"turn", 6, &ModelHarness::turn},
        {"allTurns", 6, &ModelHarness::allTurns},
        {"restart", 1, &ModelHarness::restart},
        {"openWindow", 6, &ModelHarness::openWindow},
        {"closeWindow", 1, &ModelHarness::closeWindow},
        {"selectRow", 8, &ModelHarness::selectRow},
        {"clearSelection", 3, &ModelHarness::clearSelection},
        {"selectUnknown", 1, &ModelHarness::selectUnknown},
        {"pressToolbar", 6, &ModelHarness::pressToolbar},
        {"intent", 2, &ModelHarness::intent},
        {"rowMenu", 4, &ModelHarness::rowMenu},
        {"keepRow", 3, &ModelHarness::keepRow},
        {"keptRowMenu", 2, &ModelHarness::keptRowMenu},
        {"doubleClick", 3, &ModelHarness::doubleClick},
        {"deleteRows", 2, &ModelHarness::deleteRows},
        {"moveRows", 4, &ModelHarness::moveRows},
        {"key", 5, &ModelHarness::key},
        {"stepInSettings", 5, &ModelHarness::stepInSettings},
        {"typeInSettings", 4, &ModelHarness::typeInSettings},
        {"presentSheet", 10, &ModelHarness::presentSheet},
        {"setField", 12, &ModelHarness::setField},
        {"browse", 3, &ModelHarness::browse},
        {"commit", 8, &ModelHarness::commit},
        {"cancel", 3, &ModelHarness::cancel},
        {"pointer", 6, &ModelHarness::pointer},
        {"step", 5, &ModelHarness::step},
        {"activate", 3, &ModelHarness::activate},
        {"tap", 3, &ModelHarness::tap},
        {"keepTap", 2, &ModelHarness::keepTap},
        {"keptTap", 2, &ModelHarness::keptTap},
        {"typeInPopover", 4, &ModelHarness::typeInPopover},
        {"resetHighlight", 2, &ModelHarness::resetHighlight},
        {"focusFooter", 2, &ModelHarness::focusFooter},
        {"footer", 1, &ModelHarness::footer},
    };
    return table;
}

std::size_t ModelHarness::actionCount() { return entries().size(); }
const char* ModelHarness::nameOf(std::size_t action) { return entries()[action].name; }
int ModelHarness::weightOf(std::size_t action) { return entries()[action].weight; }

ModelHarness::ModelHarness() {
    reference_.observer = [this] {
        referencePopover_.hovered.reset();
        if (referenceSettings_)
            referenceSettings_->gap.reset();
    };
    reference_.now = clock_.time;
    start();
}

ModelHarness::~ModelHarness() = default;

void ModelHarness::recordStep(const std::string& text) {
    if (recordsSteps)
        steps += "  " + text + "\n";
}

std::optional<std::string> ModelHarness::apply(const Operation& operation) {
    // Sometimes longer than letters wait for each other.
    clock_.time += std::chrono::milliseconds(1 + operation.c % 1500);
    reference_.now = clock_.time;
    log_.calls.clear();
    reference_.calls.clear();
    listBefore_.clear();
    reference_.listBefore.clear();
    settingsSignals_ = formSignals_ = popoverSignals_ = 0;
    settingsBefore_ = referenceSettings_;
    formBefore_ = referenceForm_;
    hoveredBefore_ = referencePopover_.shown();

    (this->*entries()[operation.action].run)(operation);

    if (!fault_.empty())
        return fault_;
    for (const auto difference :
         {&ModelHarness::differenceOfStore, &ModelHarness::differenceOfCalls,
          &ModelHarness::differenceOfSettings, &ModelHarness::differenceOfRows,
          &ModelHarness::differenceOfForm, &ModelHarness::differenceOfPopover,
          &ModelHarness::missingSignal})
        if (auto found = (this->*difference)())
            return found;
    return std::nullopt;
}

} // namespace kestrel::tests
