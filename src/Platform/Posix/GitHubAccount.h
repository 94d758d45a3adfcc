#pragma once

#include <string>
#include <vector>

namespace velto {

/// Whether somebody may be signed in to the GitHub CLI at `program`, in this environment ("NAME=value"): it has a token there, or
/// a file of hosts (https://cli.github.com/manual/gh_help_environment). Starting it to be told that nobody is costs a hundred
/// times as much. True for whatever isn't the CLI itself, such as a script or a package that keeps its files elsewhere. Reads two
/// files.
bool githubAccountPossible(const std::string &program, const std::vector<std::string> &environment);

} // namespace velto
