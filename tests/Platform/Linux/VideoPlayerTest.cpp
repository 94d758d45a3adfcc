#include "Platform/Linux/LinuxVideoPlayer.h"
#include "RunTests.h"

#include <QSignalSpy>

namespace velto {

/// The player of copied videos, where it can't be had.
class VideoPlayerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void aPlayerThatCantBeStartedFails()
    {
        LinuxVideoPlayer player({QStringLiteral("/nowhere/velto-video")});
        QVERIFY(!player.installed());
        const QSignalSpy failed(&player, &VideoPlayer::failed);
        player.open({}, {}, 0, {});
        player.move({1, 2, 3, 4});
        player.close();
        QCOMPARE(failed.count(), 1);
    }
};

} // namespace velto

static const Registered<velto::VideoPlayerTest> registered;
#include "VideoPlayerTest.moc"
