#include "Platform/Posix/GitHubAccount.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace velto {

namespace {

namespace fs = std::filesystem;

constexpr std::array kTokens{"GH_TOKEN", "GITHUB_TOKEN", "GH_ENTERPRISE_TOKEN", "GITHUB_ENTERPRISE_TOKEN"};
constexpr std::array kProgram{'\x7f', 'E', 'L', 'F'};
constexpr std::uintmax_t kEmptyMap = 3; // bytes; "{}" and a line's end are left by the last `gh auth logout`

std::string valueOf(const std::vector<std::string> &environment, std::string_view name)
{
    const auto found = std::ranges::find_if(environment, [name](std::string_view variable) {
        return variable.size() > name.size() && variable.starts_with(name) && variable[name.size()] == '=';
    });
    return found == environment.end() ? std::string() : found->substr(name.size() + 1);
}

bool isTheCli(const std::string &program)
{
    std::error_code error;
    const fs::path path = fs::canonical(program, error);
    std::array<char, 4> magic{};
    std::ifstream(path, std::ios::binary).read(magic.data(), magic.size());
    return !error && path.filename() == "gh"
        && std::string_view(magic.data(), magic.size())
        == "\x7f"
           "ELF";
}

fs::path hostsFile(const std::vector<std::string> &environment)
{
    if (const auto own = valueOf(environment, "GH_CONFIG_DIR"); !own.empty())
        return fs::path(own) / "hosts.yml";
    if (const auto all = valueOf(environment, "XDG_CONFIG_HOME"); !all.empty())
        return fs::path(all) / "gh/hosts.yml";
    return fs::path(valueOf(environment, "HOME")) / ".config/gh/hosts.yml";
}

} // namespace

bool githubAccountPossible(const std::string &program, const std::vector<std::string> &environment)
{
    const auto hasToken = [&environment](const char *name) { return !valueOf(environment, name).empty(); };
    if (std::ranges::any_of(kTokens, hasToken) || !isTheCli(program))
        return true;
    std::error_code error;
    const auto size = fs::file_size(hostsFile(environment), error);
    return error ? error != std::errc::no_such_file_or_directory : size > kEmptyMap;
}

} // namespace velto
