#pragma once

namespace velto {

class Accessibility;
class Applications;
class Background;
class Clipboard;
class Clock;
class Defaults;
class FileTree;
class FileWriter;
class Files;
class FolderPanel;
class Http;
class Keychain;
class Machine;
class MediaPlayers;
class Sounds;
class Terminals;
class ToolRunner;
class VideoPlayer;
class Workspace;
struct Places;

/// What the stores need from the machine they run on. All of it outlives them.
struct Desktop {
    Clock &clock;
    Background &background;
    ToolRunner &tools;
    Files &files;
    FileWriter &writer;
    const FileTree &fileTree;
    Defaults &defaults;
    Http &http;
    Keychain &keychain;
    Clipboard &clipboard;
    Workspace &workspace;
    Applications &applications;
    Accessibility &accessibility;
    Terminals &terminals;
    const Machine &machine;
    MediaPlayers &players;
    Sounds &sounds;
    FolderPanel &folderPanel;
    VideoPlayer &videoPlayer;
    const Places &places;
};

} // namespace velto
