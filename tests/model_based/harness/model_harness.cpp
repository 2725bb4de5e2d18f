#include "tests/views/random/world.h"

#include <chrono>

namespace kestrel::tests {

struct World::Entry {
    const char* name;
    int weight;
    void (World::*run)(const Operation&);
};

const std::vector<World::Entry>& World::entries() {
    static const std::vector<Entry> table{
        {"load", 2, &World::load},
        {"save", 2, &World::save},
        {"updateKnown", 3, &World::updateKnown},
        {"updateUnknown", 3, &World::updateUnknown},
        {"appendDuplicate", 3, &World::appendDuplicate},
        {"outsideList", 5, &World::outsideList},
        {"outsideNoList", 3, &World::outsideNoList},
        {"localBytes", 2, &World::localBytes},
        {"account", 3, &World::account},
        {"cloudStore", 2, &World::cloudStore},
        {"localWriteFails", 1, &World::localWriteFails},
        {"cloudWriteFails", 1, &World::cloudWriteFails},
        {"turn", 6, &World::turn},
        {"allTurns", 6, &World::allTurns},
        {"restart", 1, &World::restart},
        {"openWindow", 6, &World::openWindow},
        {"closeWindow", 1, &World::closeWindow},
        {"selectRow", 8, &World::selectRow},
        {"clearSelection", 3, &World::clearSelection},
        {"selectUnknown", 1, &World::selectUnknown},
        {"pressToolbar", 6, &World::pressToolbar},
        {"intent", 2, &World::intent},
        {"rowMenu", 4, &World::rowMenu},
        {"keepRow", 3, &World::keepRow},
        {"keptRowMenu", 2, &World::keptRowMenu},
        {"doubleClick", 3, &World::doubleClick},
        {"deleteRows", 2, &World::deleteRows},
        {"moveRows", 4, &World::moveRows},
        {"key", 5, &World::key},
        {"typeInSettings", 4, &World::typeInSettings},
        {"presentSheet", 10, &World::presentSheet},
        {"setField", 12, &World::setField},
        {"browse", 3, &World::browse},
        {"commit", 8, &World::commit},
        {"cancel", 3, &World::cancel},
        {"pointer", 6, &World::pointer},
        {"step", 5, &World::step},
        {"activate", 3, &World::activate},
        {"tap", 3, &World::tap},
        {"keepTap", 2, &World::keepTap},
        {"keptTap", 2, &World::keptTap},
        {"typeInPopover", 4, &World::typeInPopover},
        {"resetHighlight", 2, &World::resetHighlight},
        {"footer", 1, &World::footer},
    };
    return table;
}

std::size_t World::actionCount() { return entries().size(); }
const char* World::nameOf(std::size_t action) { return entries()[action].name; }
int World::weightOf(std::size_t action) { return entries()[action].weight; }

World::World() {
    plain_.observer = [this] { plainPopover_.hovered.reset(); };
    plain_.now = clock_.time;
    start();
}

World::~World() = default;

void World::say(const std::string& text) {
    if (keepsStory)
        story += "  " + text + "\n";
}

std::optional<std::string> World::apply(const Operation& operation) {
    // Sometimes longer than letters wait for each other.
    clock_.time += std::chrono::milliseconds(1 + operation.c % 1500);
    plain_.now = clock_.time;
    log_.calls.clear();
    plain_.calls.clear();
    listBefore_.clear();
    plain_.listBefore.clear();
    settingsSignals_ = formSignals_ = popoverSignals_ = 0;
    settingsBefore_ = plainSettings_;
    formBefore_ = plainForm_;
    hoveredBefore_ = plainPopover_.hovered;

    (this->*entries()[operation.action].run)(operation);

    if (!fault_.empty())
        return fault_;
    for (const auto difference :
         {&World::differenceOfStore, &World::differenceOfCalls, &World::differenceOfSettings,
          &World::differenceOfRows, &World::differenceOfForm, &World::differenceOfPopover,
          &World::missingSignal}) {
        if (auto found = (this->*difference)())
            return found;
    }
    return std::nullopt;
}

} // namespace kestrel::tests
