#pragma once

#include <QTranslator>
#include <functional>

namespace velto {

/// The words of the user interface that another desktop would say otherwise: the computer, its keyring, its keys. Looks a text
/// up in velto_linux.ts by the text alone, whatever its context, so that each sentence is there once; what isn't there
/// stays as it is. Loaded from the program's own resources.
class LinuxWording final : public QTranslator {
    Q_OBJECT
public:
    /// `find` gives the path of a program, or nothing: the texts name the command that installs packages here.
    explicit LinuxWording(const std::function<QString(const QString &)> &find, QObject *parent = nullptr);

    QString translate(const char *context, const char *text, const char *disambiguation, int n) const override;
    bool isEmpty() const override { return false; }

private:
    QString m_install;
};

/// Installs these words for the application. Called once, before the first text is made.
void speakLinux();

} // namespace velto
