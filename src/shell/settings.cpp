#include "shell/settings.h"

#include "functions/table.h"
#include "platform/platform.h"
#include "platform/settingsstore.h"
#include "resources/customlists.h"
#include "shell/application.h"
#include "shell/recentfiles.h"

#include <cstdint>

namespace vorn {

namespace {

constexpr std::size_t FolderMax = 99;
constexpr int FullScreenZoomLeast = 25;
constexpr int FullScreenZoomMost = 200;
constexpr std::size_t RowBytes = 4;

std::string recentFileName(std::size_t slot)
{
    return "RecFile" + std::to_string(slot + 1);
}

// --- Reading

void readFlag(const SettingsStore& store, std::string_view name, bool& field)
{
    std::uint32_t value = 0;
    if (store.readNumber(name, value))
        field = value != 0;
}

// A number within limits, or `fallback`.
int readWithin(const SettingsStore& store, std::string_view name, int least, int most, int fallback)
{
    std::uint32_t value = 0;
    if (!store.readNumber(name, value) || value < static_cast<std::uint32_t>(least) ||
        value > static_cast<std::uint32_t>(most))
        return fallback;
    return static_cast<int>(value);
}

bool readShortText(const SettingsStore& store, std::string_view name, std::size_t most,
                   std::u16string& field)
{
    std::u16string value;
    if (!store.readText(name, value) || value.size() > most)
        return false;
    field = value;
    return true;
}

void readCommandBand(const SettingsStore& store, Application& app)
{
    std::vector<unsigned char> value;
    if (store.readBytes("CommandBand", value) && value.size() == CommandBandSize)
        app.commandBand = value;
}

void readCustomLists(const SettingsStore& store, Application& app)
{
    std::u16string joined;
    // An empty text is one with no list in it.
    if (readShortText(store, "CLst", CustomListsMax, joined))
        app.customLists = splitCustomLists(joined);
}

int rowAt(const std::vector<unsigned char>& bytes, std::size_t index)
{
    std::uint32_t row = 0;
    for (std::size_t byte = RowBytes; byte-- > 0;)
        row = row << 8 | bytes[index * RowBytes + byte];
    const bool isFunction = row < FunctionRowCount && !FunctionTable[row].name.empty();
    return isFunction ? static_cast<int>(row) : NoFunction;
}

void readUsedFunctions(const SettingsStore& store, Application& app)
{
    std::vector<unsigned char> value;
    if (!store.readBytes("UsedFn", value) || value.size() != UsedFunctionCount * RowBytes)
        return;
    for (std::size_t index = 0; index < UsedFunctionCount; ++index)
        app.usedFunctions[index] = rowAt(value, index);
}

void setDefaults(Application& app)
{
    app.formulaBarVisible = true;
    app.moveAfterEnter = MoveNowhere;
    app.fullScreenZoomOn = true;
    app.fullScreenZoom = DefaultFullScreenZoom;
    app.commandBand.clear();
    app.documentFolder = DefaultDocumentFolder;
    app.recentFiles.fill({});
    app.customLists = splitCustomLists(DefaultCustomLists);
    app.setUsedFunctionsToDefault();
}

// --- Writing

std::vector<unsigned char> usedFunctionBytes(const Application& app)
{
    std::vector<unsigned char> bytes;
    for (int row : app.usedFunctions) {
        for (std::size_t byte = 0; byte < RowBytes; ++byte)
            bytes.push_back(
                static_cast<unsigned char>(static_cast<std::uint32_t>(row) >> (8 * byte)));
    }
    return bytes;
}

} // namespace

void loadSettings()
{
    Application& app = *application;
    setDefaults(app);
    if (platform.settingsStore == nullptr)
        return;
    SettingsStore& store = *platform.settingsStore;
    store.open();
    readFlag(store, "FmlBar", app.formulaBarVisible);
    app.moveAfterEnter = static_cast<MoveAfterEnter>(
        readWithin(store, "MvEnter", MoveNowhere, MoveDown, MoveNowhere));
    readFlag(store, "DFSZoom", app.fullScreenZoomOn);
    app.fullScreenZoom =
        readWithin(store, "FSZoom", FullScreenZoomLeast, FullScreenZoomMost, DefaultFullScreenZoom);
    readCommandBand(store, app);
    readShortText(store, "DocDir", FolderMax, app.documentFolder);
    for (std::size_t slot = 0; slot < RecentFileCount; ++slot)
        readShortText(store, recentFileName(slot), RecentFileMax, app.recentFiles[slot]);
    readCustomLists(store, app);
    readUsedFunctions(store, app);
}

void saveSettings()
{
    if (platform.settingsStore == nullptr)
        return;
    const Application& app = *application;
    SettingsStore& store = *platform.settingsStore;
    store.open();
    store.setNumber("FmlBar", app.formulaBarVisible ? 1 : 0);
    store.setNumber("MvEnter", static_cast<std::uint32_t>(app.moveAfterEnter));
    store.setNumber("DFSZoom", app.fullScreenZoomOn ? 1 : 0);
    store.setNumber("FSZoom", static_cast<std::uint32_t>(app.fullScreenZoom));
    if (app.commandBand.size() == CommandBandSize)
        store.setBytes("CommandBand", app.commandBand);
    store.setText("DocDir", app.documentFolder);
    for (std::size_t slot = 0; slot < RecentFileCount; ++slot)
        store.setText(recentFileName(slot), app.recentFiles[slot]);
    store.setText("CLst", joinCustomLists(app.customLists));
    store.setBytes("UsedFn", usedFunctionBytes(app));
    store.keep();
}

std::vector<std::u16string> splitCustomLists(std::u16string_view text)
{
    std::vector<std::u16string> lists;
    for (std::size_t end = 0; (end = text.find(u';')) != std::u16string_view::npos;) {
        lists.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return lists;
}

std::u16string joinCustomLists(const std::vector<std::u16string>& lists)
{
    std::u16string text;
    for (const std::u16string& list : lists) {
        if (text.size() + list.size() + 1 > CustomListsMax)
            break;
        text += list;
        text += u';';
    }
    return text;
}

} // namespace vorn
