#include "Platform/Posix/PosixFileTree.h"

#include "Platform/Posix/Descriptor.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <memory>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <vector>

namespace velto {

namespace {

struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
};

/// One walk. A folder is closed before its subfolders are opened, so that a deep tree doesn't use up the descriptors.
class Walk {
public:
    Walk(std::string_view suffix, const std::function<void(const TreeFile &)> &found)
        : m_suffix(suffix)
        , m_found(found)
    {
    }

    void folder(const std::string &path)
    {
        std::vector<std::string> below;
        if (const std::unique_ptr<DIR, CloseFolder> folder{::opendir(path.c_str())}) {
            m_file.path = path + '/';
            while (const dirent *entry = ::readdir(folder.get()))
                look(::dirfd(folder.get()), *entry, below);
        }
        for (const std::string &each : below)
            this->folder(each);
    }

private:
    void look(int folder, const dirent &entry, std::vector<std::string> &below)
    {
        const std::string_view name(entry.d_name);
        if (name == "." || name == "..")
            return;
        bool isFolder = entry.d_type == DT_DIR;
        struct stat status = {};
        if (entry.d_type == DT_UNKNOWN && ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
            isFolder = S_ISDIR(status.st_mode);
        if (isFolder) {
            below.emplace_back(m_file.path).append(name);
            return;
        }
        if (name.size() <= m_suffix.size() || !name.ends_with(m_suffix) || ::fstatat(folder, entry.d_name, &status, 0) != 0
            || !S_ISREG(status.st_mode))
            return;
        const std::size_t length = m_file.path.size();
        m_file.path.append(name);
        m_file.modified = qint64(status.st_mtim.tv_sec) * 1000 + status.st_mtim.tv_nsec / 1'000'000;
        m_file.size = quint64(status.st_size);
        m_found(m_file);
        m_file.path.resize(length);
    }

    std::string_view m_suffix;
    const std::function<void(const TreeFile &)> &m_found;
    TreeFile m_file;
};

/// File systems that others change without this kernel's knowledge; linux/magic.h lacks FUSE's.
constexpr std::array<unsigned, 6> kShared{NFS_SUPER_MAGIC, SMB_SUPER_MAGIC, 0xff534d42, SMB2_SUPER_MAGIC, V9FS_MAGIC, 0x65735546};

class InotifyChanges final : public FolderChanges {
public:
    explicit InotifyChanges(Descriptor events)
        : m_events(std::move(events))
    {
    }

    bool any() override
    {
        std::array<char, 4096> events; // NOLINT(cppcoreguidelines-pro-type-member-init): only emptied
        bool some = false;
        while (::read(m_events.get(), events.data(), events.size()) > 0)
            some = true;
        return some;
    }
    int descriptor() const override { return m_events.get(); }

private:
    Descriptor m_events;
};

} // namespace

std::unique_ptr<FolderChanges> PosixFileTree::changesIn(const QString &folder) const
{
    const QByteArray path = QFile::encodeName(folder);
    struct statfs system = {};
    if (::statfs(path.constData(), &system) != 0 || std::ranges::count(kShared, unsigned(system.f_type)) > 0)
        return nullptr;
    Descriptor events(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    constexpr unsigned kWanted = IN_CREATE | IN_DELETE | IN_MOVE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    if (!events || ::inotify_add_watch(events.get(), path.constData(), kWanted) < 0)
        return nullptr;
    return std::make_unique<InotifyChanges>(std::move(events));
}

void PosixFileTree::each(const QString &folder, std::string_view suffix, const std::function<void(const TreeFile &)> &found) const
{
    Walk(suffix, found).folder(QFile::encodeName(folder).toStdString());
}

} // namespace velto
