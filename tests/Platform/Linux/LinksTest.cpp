#include "Platform/Linux/XdgWorkspace.h"
#include "RunTests.h"

#include <QDesktopServices>

using namespace velto;
using namespace Qt::StringLiterals;

/// A link from outside opens a browser, and never any other program.
class LinksTest : public QObject {
    Q_OBJECT

    QList<QUrl> m_opened;

public Q_SLOTS:
    void take(const QUrl &url) { m_opened.append(url); }

private Q_SLOTS:
    void opensWhatABrowserTakes_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<bool>("opens");
        for (const char *link : {"https://a.example/x?y=$(touch z)#`id`", "http://a.example", "HTTPS://A.EXAMPLE/"})
            QTest::newRow(link) << QString::fromLatin1(link) << true;
        for (const char *link : {"", "a.example", "//a.example", "https:///etc/passwd", "https:a", "file:///etc/passwd",
                                 "file://a.example/x", "ssh://a.example", "javascript:alert(1)", "mailto:sam@acme.example",
                                 "data://a.example/text", "https://a.example:99999999"})
            QTest::newRow(link) << QString::fromLatin1(link) << false;
    }
    void opensWhatABrowserTakes()
    {
        QFETCH(QString, link);
        QFETCH(bool, opens);
        const QUrl url(link);
        for (const char *scheme : {"http", "https", "file", "ssh", "javascript", "mailto", "data", ""})
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "take");
        XdgWorkspace workspace;
        workspace.open(url);
        QCOMPARE(m_opened, opens ? QList{url} : QList<QUrl>());
        m_opened.clear();
        for (const char *scheme : {"http", "https", "file", "ssh", "javascript", "mailto", "data", ""})
            QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }
};

static const Registered<LinksTest> kAdded;
#include "LinksTest.moc"
