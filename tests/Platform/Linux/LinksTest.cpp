#include "Platform/Linux/LinuxVideoPlayer.h"
#include "Platform/Linux/XdgWorkspace.h"
#include "RunTests.h"

#include <QDesktopServices>
#include <QSignalSpy>

using namespace velto;
using namespace Qt::StringLiterals;

/// A link from outside opens in a browser, and never in any other program.
class LinksTest : public QObject {
    Q_OBJECT

    QList<QUrl> m_opened;

public Q_SLOTS:
    void take(const QUrl &url) { m_opened.append(url); }

private Q_SLOTS:
    void opensWhatABrowserTakes()
    {
        const auto opened = [this](const char *link) {
            m_opened.clear();
            XdgWorkspace().open(QUrl(QString::fromLatin1(link)));
            return !m_opened.isEmpty();
        };
        const auto schemes = {"http", "https", "file", "ssh", "javascript", "mailto", "data", ""};
        for (const char *scheme : schemes)
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "take");
        for (const char *link : {"https://a.example/x?y=$(touch z)#`id`", "http://a.example", "HTTPS://A.EXAMPLE/"})
            QVERIFY2(opened(link), link);
        for (const char *link : {"", "a.example", "//a.example", "https:///etc/passwd", "https:a", "file:///etc/passwd",
                                 "file://a.example/x", "ssh://a.example", "javascript:alert(1)", "mailto:sam@acme.example",
                                 "data://a.example/text", "https://a.example:99999999"})
            QVERIFY2(!opened(link), link);
        for (const char *scheme : schemes)
            QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }

    void aPlayerOfVideosThatCantBeStartedFails()
    {
        LinuxVideoPlayer player({u"/nowhere/velto-video"_s});
        QVERIFY(!player.installed());
        const QSignalSpy failed(&player, &VideoPlayer::failed);
        player.open({}, {}, 0, {});
        player.move({1, 2, 3, 4});
        player.close();
        QCOMPARE(failed.count(), 1);
    }
};

static const Registered<LinksTest> kAdded;
#include "LinksTest.moc"
