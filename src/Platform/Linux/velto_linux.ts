<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- What Linux says in other words. Whatever the context of a text in the program, it is looked up here by the text alone, so
     that a sentence stands once; see LinuxWording. "sudo apt install" becomes what this system installs packages with. -->
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Linux</name>
    <message>
        <source>Claude Code isn't installed on this Mac.</source>
        <translation>Claude Code isn't installed on this computer.</translation>
    </message>
    <message>
        <source>When OBS, Screen Studio, ScreenFlow, Loom, Riverside, Ecamm or Descript is open, the velto shows only a red dot and nothing slides out, so client names never end up in a video.</source>
        <translation>When OBS, SimpleScreenRecorder, vokoscreenNG, Kazam, wf-recorder, wl-screenrec, GPU Screen Recorder or ffmpeg records, Spectacle, Kooha or GNOME's own recorder does, or a program is given your screen through PipeWire, the velto shows only a red dot and nothing slides out, so client names never end up in a video.</translation>
    </message>
    <message>
        <source>Scan this Mac</source>
        <translation>Scan this computer</translation>
    </message>
    <message>
        <source>On your other Mac · via Quillbox</source>
        <translation>On your other computer · via Quillbox</translation>
    </message>
    <message>
        <source>Claude Code can tell Velto when an agent is done or needs you, instead of Velto checking every 45 seconds. Nothing leaves this Mac.</source>
        <translation>Claude Code can tell Velto when an agent is done or needs you, instead of Velto checking every 45 seconds. Nothing leaves this computer.</translation>
    </message>
    <message>
        <source>Kept in Velto on this Mac.</source>
        <translation>Kept in Velto on this computer.</translation>
    </message>
    <message>
        <source>↑↓ move · ↩ open · ⌘D done · ⌘N new</source>
        <translation>↑↓ move · ↩ open · Ctrl+D done · Ctrl+N new</translation>
    </message>
    <message>
        <source>Mark done (⌘D) — you can undo for 5 seconds</source>
        <translation>Mark done (Ctrl+D) — you can undo for 5 seconds</translation>
    </message>
    <message>
        <source>On this Mac · %1</source>
        <translation>On this computer · %1</translation>
    </message>
    <message>
        <source>Other Mac · %1</source>
        <translation>Other computer · %1</translation>
    </message>
    <message>
        <source>This Mac: %1</source>
        <translation>This computer: %1</translation>
    </message>
    <message>
        <source>Other Mac: %1</source>
        <translation>Other computer: %1</translation>
    </message>
    <message>
        <source>This Mac</source>
        <translation>This computer</translation>
    </message>
    <message>
        <source>Other Mac</source>
        <translation>Other computer</translation>
    </message>
    <message>
        <source>Todos come straight from the Quillbox database on this Mac. The learning card, live sessions and Tolver need a Quillbox hub (Settings → Quillbox).</source>
        <translation>Todos come straight from the Quillbox database on this computer. The learning card, live sessions and Tolver need a Quillbox hub (Settings → Quillbox).</translation>
    </message>
    <message>
        <source>Saved in Keychain — paste to replace</source>
        <translation>Saved in the keyring — paste to replace</translation>
    </message>
    <message>
        <source>Read from Claude Code on this Mac.</source>
        <translation>Read from Claude Code on this computer.</translation>
    </message>
    <message>
        <source>No Claude Code logs on this Mac.</source>
        <translation>No Claude Code logs on this computer.</translation>
    </message>
    <message>
        <source>Run `brew install gh`, then `gh auth login`.</source>
        <translation>Run `sudo apt install gh`, then `gh auth login`.</translation>
    </message>
    <message>
        <source>brew install gh &amp;&amp; gh auth login</source>
        <translation>sudo apt install gh &amp;&amp; gh auth login</translation>
    </message>
    <message>
        <source>Install the Xcode Command Line Tools.</source>
        <translation>Run `sudo apt install git`.</translation>
    </message>
    <message>
        <source>Connect Google Calendar. No Mac Calendar access.</source>
        <translation>Connect Google Calendar. No access to the calendars on this computer.</translation>
    </message>
    <message>
        <source>Add a meeting yourself. No Mac Calendar access.</source>
        <translation>Add a meeting yourself. No access to the calendars on this computer.</translation>
    </message>
    <message>
        <source>Read-only · tokens in Keychain</source>
        <translation>Read-only · tokens in the keyring</translation>
    </message>
    <message>
        <source>Stored only inside Velto. Mac Calendar and Apple Reminders are never read.</source>
        <translation>Stored only inside Velto. The calendars and reminders on this computer are never read.</translation>
    </message>
    <message>
        <source>Tokens stay in your Mac's Keychain and go only to that service, over HTTPS.</source>
        <translation>Tokens stay in your desktop's keyring and go only to that service, over HTTPS.</translation>
    </message>
    <message>
        <source>Settings (⌘,)</source>
        <translation>Settings (Ctrl+,)</translation>
    </message>
    <message>
        <source>Your own todo list, kept in Velto on this Mac.</source>
        <translation>Your own todo list, kept in Velto on this computer.</translation>
    </message>
    <message>
        <source>A meeting you add yourself, with an optional join link. No Mac Calendar access.</source>
        <translation>A meeting you add yourself, with an optional join link. No access to the calendars on this computer.</translation>
    </message>
    <message>
        <source>⌃⌥N opens Velto from anywhere</source>
        <translation>Ctrl+Alt+N opens Velto from anywhere</translation>
    </message>
    <message>
        <source>⌃⌥N is used by another app — open Velto from the menu bar icon</source>
        <translation>Ctrl+Alt+N is taken — bind another key to "velto --search" in your desktop's settings</translation>
    </message>
    <message>
        <source>Connecting adds two hooks to ~/.claude/settings.json (a backup is saved next to it). When an agent finishes or needs you, Claude Code tells Velto on this Mac at 127.0.0.1:%1, with a secret only Velto knows. Nothing leaves your Mac.</source>
        <translation>Connecting adds two hooks to ~/.claude/settings.json (a backup is saved next to it). When an agent finishes or needs you, Claude Code tells Velto on this computer at 127.0.0.1:%1, with a secret only Velto knows. Nothing leaves your computer.</translation>
    </message>
    <message>
        <source>Tokens are stored in your Mac's Keychain and sent only to that service, over HTTPS. Turn on "Linear, Jira and Slack" in Modules to see them in the velto.</source>
        <translation>Tokens are stored in your desktop's keyring and sent only to that service, over HTTPS. Turn on "Linear, Jira and Slack" in Modules to see them in the velto.</translation>
    </message>
    <message>
        <source>Velto keeps your data on this Mac. It only talks to the work tools you connect (each to its own API). No analytics, no tracking.</source>
        <translation>Velto keeps your data on this computer. It only talks to the work tools you connect (each to its own API). No analytics, no tracking.</translation>
    </message>
    <message>
        <source>Removes the Claude Code hooks, the login item, work-tool tokens and all settings. Then drag Velto to the Trash.</source>
        <translation>Removes the Claude Code hooks, the start at login, work-tool tokens and all settings. Then uninstall Velto the way you installed it.</translation>
    </message>
    <message>
        <source>This removes the Claude Code hooks, the login item, the tokens and all settings. Then drag Velto to the Trash.</source>
        <translation>This removes the Claude Code hooks, the start at login, the tokens and all settings. Then uninstall Velto the way you installed it.</translation>
    </message>
    <message>
        <source>The login item: %1</source>
        <translation>The start at login: %1</translation>
    </message>
    <message>
        <source>Music or Spotify, when they're open.</source>
        <translation>Any media player, when it's open.</translation>
    </message>
    <message>
        <source>What Music or Spotify is playing, with play/pause.</source>
        <translation>What a media player is playing, with play/pause.</translation>
    </message>
    <message>
        <source>Then drag Velto to the Trash.</source>
        <translation>Then uninstall Velto the way you installed it.</translation>
    </message>
    <message>
        <source>Remove everything Velto added to this Mac?</source>
        <translation>Remove everything Velto added to this computer?</translation>
    </message>
    <message>
        <source>Or press ⌃⌥N from anywhere</source>
        <translation>Or press Ctrl+Alt+N from anywhere</translation>
    </message>
    <message>
        <source>Settings live in the menu bar icon</source>
        <translation>Settings: right-click the velto, or its tray icon</translation>
    </message>
    <message>
        <source>Velto lives around the camera. It shows what needs you — agents waiting, your next meeting — and slides out a one-line alert when something changes.</source>
        <translation>Velto lives at the top of your screen. It shows what needs you — agents waiting, your next meeting — and slides out a one-line alert when something changes.</translation>
    </message>
    <message>
        <source>A countdown beside the camera.</source>
        <translation>A countdown in the velto.</translation>
    </message>
</context>
</TS>
