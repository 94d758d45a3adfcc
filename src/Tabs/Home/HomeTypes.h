#pragma once

#include "Platform/VideoPlayer.h"
#include "Tabs/Home/HomeSource.h"

#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. None can be made there.

struct HomeSourceType {
    Q_GADGET
    QML_FOREIGN(velto::HomeSource)
    QML_NAMED_ELEMENT(HomeSource)
    QML_UNCREATABLE("Made in C++")
};

struct HomeSpotlightType {
    Q_GADGET
    QML_FOREIGN(velto::HomeSpotlight)
    QML_NAMED_ELEMENT(HomeSpotlight)
    QML_UNCREATABLE("Made in C++")
};

struct VideoPlayerType {
    Q_GADGET
    QML_FOREIGN(velto::VideoPlayer)
    QML_NAMED_ELEMENT(VideoPlayer)
    QML_UNCREATABLE("Made in C++")
};
