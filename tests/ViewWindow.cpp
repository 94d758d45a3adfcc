#include "ViewWindow.h"

#include "Warnings.h"

#include "Design/Theme.h"

#include <QLocale>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>
#include <QTextDocumentFragment>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QList<QQuickItem *> itemsBelow(QQuickItem *root)
{
    QList<QQuickItem *> items;
    for (QQuickItem *child : root->childItems()) {
        if (!child->isVisible())
            continue;
        items.append(child);
        items += itemsBelow(child);
    }
    return items;
}

struct Piece {
    QRectF place;
    QString text;
};

/// Which of the theme's colours this is, however faint or lightened for letters; empty for white.
QString colourName(const QColor &colour)
{
    static constexpr std::pair<QColor, const char *> kColours[] = {
        {Theme::kIce, "ice"}, {Theme::kAmber, "amber"},   {Theme::kMint, "mint"},   {Theme::kCoral, "coral"},
        {Theme::kRed, "red"}, {Theme::kOrange, "orange"}, {Theme::kGreen, "green"}, {Theme::kCyan, "cyan"}};
    static constexpr double kChipFill = 0.16;
    for (const auto &[known, name] : kColours)
        if (known.rgb() == colour.rgb() || Theme::ink(known).rgb() == colour.rgb()
            || Theme::ink(known, kChipFill).rgb() == colour.rgb())
            return QLatin1StringView(name) + u':';
    return {};
}

QString textOn(const QQuickItem *item)
{
    const QString colour = colourName(item->property("color").value<QColor>());
    if (item->inherits("QQuickText")) {
        const bool rich = item->property("textFormat").toInt() == Qt::RichText;
        const QString written = item->property("text").toString();
        const QString text = rich ? QTextDocumentFragment::fromHtml(written).toPlainText() : written;
        const QVariant symbol = item->property("name");
        return text.isEmpty() ? QString() : colour + (symbol.isValid() ? u'(' + symbol.toString() + u')' : text);
    }
    if (item->inherits("QQuickTextInput"))
        return item->property("displayText").toString();
    if (item->inherits("QQuickTextEdit")) {
        const QString text = item->property("text").toString();
        return text.isEmpty() ? QString() : colour + text;
    }
    const bool small = item->width() > 0 && item->width() <= 8 && item->height() <= 8;
    return small && item->inherits("velto::LiveDot") && !colour.isEmpty() ? colour + u'*' : QString();
}

void collect(const QQuickItem *item, double opacity, QRectF sight, QList<Piece> &pieces)
{
    opacity *= item->opacity();
    if (!item->isVisible() || opacity < 0.1)
        return;
    const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
    if (item->clip())
        sight &= place;
    if (const QString text = textOn(item); !text.isEmpty() && sight.intersects(place))
        pieces.append({place, text});
    for (const QQuickItem *child : item->childItems())
        collect(child, opacity, sight, pieces);
}

/// Whether a piece continues the one before: digits are in slots of their own.
bool continues(const Piece &piece, const Piece &before)
{
    const auto isLetter = [](const Piece &each) { return each.text.size() == 1 || each.text.at(each.text.size() - 2) == u':'; };
    return isLetter(piece) && std::abs(piece.place.left() - before.place.right()) < 2 && !before.text.endsWith(u')');
}

template <typename Matches> QQuickItem *first(const QList<QQuickItem *> &items, Matches matches)
{
    const auto found = std::ranges::find_if(items, matches);
    return found == items.end() ? nullptr : *found;
}

} // namespace

void ViewWindow::init()
{
    Warnings::start();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

void ViewWindow::close()
{
    m_tabOrder.reset();
    m_view.reset();
}

void ViewWindow::cleanup()
{
    close();
    QLocale::setDefault(QLocale::system());
    const QStringList warnings = Warnings::stop();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
}

void ViewWindow::begin()
{
    close();
    m_view = std::make_unique<QQuickView>();
    m_view->engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_view->setColor(Qt::black);
}

QQuickItem *ViewWindow::showQml(const QString &qml, QSize size, const QVariantMap &properties)
{
    begin();
    QQmlComponent component(m_view->engine());
    component.setData((u"import QtQuick\nimport Velto.Design\n"_s + qml).toUtf8(), QUrl(u"qrc:/test.qml"_s));
    auto *item = component.isReady() ? qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties)) : nullptr;
    if (!item) {
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    item->setParent(m_view.get());
    item->setParentItem(m_view->contentItem());
    appear(size);
    return item;
}

void ViewWindow::appear(QSize size)
{
    m_tabOrder = std::make_unique<TabOrder>(*m_view);
    m_view->resize(size);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    m_view->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_view->grabWindow(); // lays everything out
}

void ViewWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_view.get(), key, modifiers);
    m_view->grabWindow();
}

void ViewWindow::type(const QString &text)
{
    for (const QChar c : text)
        QTest::keyClick(m_view.get(), c.toLatin1());
}

void ViewWindow::click(QQuickItem *item)
{
    QVERIFY(item);
    m_view->grabWindow();
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middle.toPoint());
    m_view->grabWindow();
}

QList<QQuickItem *> ViewWindow::items() const
{
    return itemsBelow(m_view->contentItem());
}

QStringList ViewWindow::seen(const QQuickItem *root) const
{
    m_view->grabWindow();
    QList<Piece> pieces;
    collect(root ? root : m_view->contentItem(), 1, QRectF(QPointF(), m_view->size()), pieces);
    std::ranges::stable_sort(pieces, {}, [](const Piece &piece) { return piece.place.center().y(); });
    QStringList lines;
    for (auto begin = pieces.begin(); begin != pieces.end();) {
        const auto isLower = [&](const Piece &piece) { return piece.place.center().y() > begin->place.center().y() + 6; };
        const auto end = std::find_if(begin, pieces.end(), isLower);
        std::stable_sort(begin, end, [](const Piece &a, const Piece &b) { return a.place.left() < b.place.left(); });
        QString line = begin->text;
        for (auto each = begin + 1; each != end; ++each)
            line += continues(*each, *(each - 1)) ? each->text.last(1) : u" | "_s + each->text;
        lines += line;
        begin = end;
    }
    return lines;
}

QList<QQuickItem *> ViewWindow::rowsWith(const char *property) const
{
    QList<QQuickItem *> rows = items();
    rows.removeIf([&](QQuickItem *item) { return !item->property(property).toBool(); });
    std::ranges::sort(rows, {}, [](QQuickItem *row) { return row->mapToScene({0, 0}).y(); });
    return rows;
}

QQuickItem *ViewWindow::list() const
{
    return first(items(), [](QQuickItem *item) { return item->inherits("QQuickListView"); });
}

QQuickItem *ViewWindow::named(const QString &name) const
{
    return first(items(), [&](QQuickItem *item) { return nameOf(item) == name; });
}

QQuickItem *ViewWindow::button(const QString &name) const
{
    return first(items(), [&](QQuickItem *item) { return item->activeFocusOnTab() && nameOf(item) == name; });
}

QString ViewWindow::nameOf(QQuickItem *item, QAccessible::Text kind)
{
    QAccessibleInterface *interface = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
    return interface ? interface->text(kind) : QString();
}

QString ViewWindow::focused() const
{
    return nameOf(m_view->activeFocusItem());
}

} // namespace velto
