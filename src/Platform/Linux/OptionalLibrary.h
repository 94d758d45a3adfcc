#pragma once

#include <QLibrary>
#include <QString>

namespace velto {

/// Functions of a library that the program can do without. The first look-up loads it, and it stays loaded.
class OptionalLibrary {
public:
    OptionalLibrary(const QString &name, int version)
        : m_library(name, version)
    {
    }

    /// Null if the library or the function is missing.
    template <typename Function> void resolve(Function &function, const char *name)
    {
        function = reinterpret_cast<Function>(m_library.resolve(name));
        m_complete = m_complete && function;
    }
    /// Whether everything looked up so far was found.
    bool isComplete() const { return m_complete; }

private:
    QLibrary m_library;
    bool m_complete = true;
};

} // namespace velto
