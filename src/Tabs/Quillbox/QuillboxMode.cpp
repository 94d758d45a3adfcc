#include "Tabs/Quillbox/QuillboxMode.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QString shortened(const QString &path, const QString &home)
{
    if (home.isEmpty() || !path.startsWith(home))
        return path;
    const QString rest = path.mid(home.size());
    return rest.isEmpty() || rest.startsWith(u'/') ? u'~' + rest : path;
}

} // namespace

QString QuillboxMode::label(const QString &home) const
{
    switch (m_kind) {
    case Kind::Local:
        return QCoreApplication::translate("QuillboxMode", "On this Mac · %1").arg(shortened(m_dir, home));
    case Kind::Hub:
        return QCoreApplication::translate("QuillboxMode", "Hub · %1")
            .arg(m_url.host().isEmpty() ? m_url.toString() : m_url.host());
    case Kind::Missing:
        break;
    }
    return QCoreApplication::translate("QuillboxMode", "Not connected");
}

} // namespace velto
