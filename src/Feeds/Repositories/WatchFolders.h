#pragma once

#include <QString>
#include <functional>

class QObject;

namespace velto {

class FolderPanel;
class Prefs;

/// Asks the user for folders that hold repositories and adds each once to those that are searched; `added` follows if
/// there was a new one. Nothing happens if `context` is gone by then. UI thread only.
void chooseWatchFolders(FolderPanel &panel, Prefs &prefs, QObject *context, std::function<void()> added);

} // namespace velto
