// Shows the design primitives in all their states, in a window or as a picture:
//     velto-gallery [--picture FILE] [--scale N] [--reduced-motion]

#include "Core/DateModel.h"
#include "Core/SourceState.h"
#include "Design/Symbols.h"
#include "Design/TabOrder.h"
#include "Design/Theme.h"
#include "Platform/Fake/FakeClock.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QTimer>
#include <cstdio>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

/// What must be set before there is an application object.
void prepare(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--picture"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        if (!std::strcmp(argv[i], "--scale") && i + 1 < argc)
            qputenv("QT_SCALE_FACTOR", argv[i + 1]);
    }
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

QStringList symbolNames()
{
    QStringList names;
    for (const velto::SymbolEntry &symbol : velto::symbolTable())
        names += symbol.name;
    return names;
}

QVariantList feeds()
{
    using velto::SourceState;
    const SourceState states[] = {
        SourceState::loading(),
        SourceState::unavailable(u"Claude Code isn't installed."_s, u"Install it, then scan again."_s),
        SourceState::failed(u"Quillbox didn't answer."_s),
        SourceState::ready(),
    };
    QVariantList list;
    for (const SourceState &state : states)
        list += QVariant::fromValue(state);
    return list;
}

} // namespace

int main(int argc, char **argv)
{
    prepare(argc, argv);
    QGuiApplication app(argc, argv);
    QCommandLineParser options;
    options.addHelpOption();
    const QCommandLineOption picture(u"picture"_s, u"Write a picture to this file and end."_s, u"file"_s);
    const QCommandLineOption scale(u"scale"_s, u"Device pixels for each logical one."_s, u"factor"_s);
    const QCommandLineOption reduced(u"reduced-motion"_s, u"Show what stands still then."_s);
    options.addOptions({picture, scale, reduced});
    options.process(app);

    const velto::FakeClock clock;
    velto::DateModel date(clock);
    velto::DateModel wrong(clock);
    wrong.type(u"soon"_s);
    QQuickView view;
    view.engine()->addImportPath(u"qrc:/qt/qml"_s);
    const velto::TabOrder tabOrder(view);
    view.setColor(Qt::black);
    view.setTitle(u"Velto gallery"_s);
    view.setInitialProperties({{u"symbols"_s, symbolNames()},
                               {u"feeds"_s, feeds()},
                               {u"date"_s, QVariant::fromValue(&date)},
                               {u"wrong"_s, QVariant::fromValue(&wrong)},
                               {u"still"_s, options.isSet(picture)}});
    view.setSource(QUrl(u"qrc:/qt/qml/Velto/Gallery/Gallery.qml"_s));
    if (view.status() != QQuickView::Ready)
        return 1;
    velto::Theme::of(view.engine())->setReducedMotion(options.isSet(reduced));
    view.show();
    if (!options.isSet(picture))
        return app.exec();

    // Long enough for a pulse to have begun and a help text to be shown.
    QTimer::singleShot(900, &app, [&] { app.exit(view.grabWindow().save(options.value(picture)) ? 0 : 1); });
    return app.exec();
}
