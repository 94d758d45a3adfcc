#include "App/ThisMachine.h"

#include "Platform/Clock.h"
#include "Platform/Posix/ToolSearchPath.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace velto {

Places placesOfThisMachine()
{
    return {
        .home = QDir::homePath(),
        .configuration = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/velto"_L1,
        .data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Velto"_L1,
        .temporary = QDir::tempPath(),
        .downloads = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation),
    };
}

ThisMachine::ThisMachine()
    : places(placesOfThisMachine())
    , ownClock(systemClock())
    , clock(*ownClock)
    , defaults(files, writer, clock, places.configuration + "/settings.json"_L1)
    , platform(clock, files, defaults, places)
    , tools(toolSearchPath(places.home, qEnvironmentVariable("PATH")))
    , sounds(background)
{
}

ThisMachine::~ThisMachine() = default;

Desktop ThisMachine::desktopWith(Defaults &ofSettings, Keychain &ofSecrets)
{
    return {
        .clock = clock,
        .background = background,
        .tools = tools,
        .files = files,
        .writer = writer,
        .fileTree = fileTree,
        .defaults = ofSettings,
        .http = http,
        .keychain = ofSecrets,
        .clipboard = platform.clipboard,
        .workspace = platform.workspace,
        .applications = platform.applications,
        .accessibility = platform.accessibility,
        .terminals = platform.terminals,
        .machine = platform.machine,
        .players = platform.players,
        .sounds = sounds,
        .folderPanel = platform.folderPanel,
        .videoPlayer = platform.videoPlayer,
        .places = places,
    };
}

} // namespace velto
