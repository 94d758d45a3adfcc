#include "Platform/Linux/DisplayPanels.h"

#include <QFile>
#include <algorithm>
#include <dlfcn.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// Types of the library, used only through pointers, and GLib's.
struct GmDeviceInfo;
struct GmDisplayPanel;
struct GmCutout;
struct GListModel;
struct GmRect {
    int x, y, width, height;
};

struct Functions {
    void (*init)();
    char **(*compatibles)(const char *system, void **error);
    GmDeviceInfo *(*infoNew)(const char *const *compatibles);
    GmDisplayPanel *(*infoPanel)(GmDeviceInfo *);
    GListModel *(*panelCutouts)(GmDisplayPanel *);
    int (*panelWidth)(GmDisplayPanel *);
    int (*panelHeight)(GmDisplayPanel *);
    const GmRect *(*cutoutBounds)(GmCutout *);
    unsigned (*count)(GListModel *);
    GmCutout *(*item)(GListModel *, unsigned);
    void (*unref)(void *);
    void (*freeNames)(char **);
};

/// Finds GLib's functions too, since the library links to GLib.
std::optional<Functions> load(const char *name)
{
    void *library = dlopen(name, RTLD_LAZY | RTLD_LOCAL);
    if (!library)
        return std::nullopt;
    Functions f{};
    const auto resolve = [library](const char *symbol, auto &function) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(library, symbol));
        return function != nullptr;
    };
    const bool all = resolve("gm_init", f.init) && resolve("gm_device_tree_get_compatibles", f.compatibles)
        && resolve("gm_device_info_new", f.infoNew) && resolve("gm_device_info_get_display_panel", f.infoPanel)
        && resolve("gm_display_panel_get_cutouts", f.panelCutouts) && resolve("gm_display_panel_get_x_res", f.panelWidth)
        && resolve("gm_display_panel_get_y_res", f.panelHeight) && resolve("gm_cutout_get_bounds", f.cutoutBounds)
        && resolve("g_list_model_get_n_items", f.count) && resolve("g_list_model_get_item", f.item)
        && resolve("g_object_unref", f.unref) && resolve("g_strfreev", f.freeNames);
    return all ? std::optional(f) : std::nullopt;
}

/// The cutout at the middle of the upper edge. One in a corner is no housing for a strip in the middle.
QRect housingAmong(const Functions &f, GmDisplayPanel *panel, QSize size)
{
    constexpr int kMostOfHeight = 8; // a housing is less than one part in so many of the panel's height
    const int middle = size.width() / 2;
    QRect housing;
    auto *cutouts = f.panelCutouts(panel);
    for (unsigned i = 0; cutouts && i < f.count(cutouts); ++i) {
        auto *cutout = f.item(cutouts, i);
        if (const GmRect *bounds = f.cutoutBounds(cutout)) {
            const QRect rect(bounds->x, bounds->y, bounds->width, bounds->height);
            if (rect.left() <= middle && rect.right() >= middle && rect.top() >= 0
                && rect.bottom() < size.height() / kMostOfHeight)
                housing |= QRect(QPoint(rect.left(), 0), rect.bottomRight());
        }
        f.unref(cutout);
    }
    return housing;
}

} // namespace

std::optional<DisplayPanel> builtInPanel(const QString &system, const char *library)
{
    if (!QFile::exists(system + "/firmware/devicetree/base/compatible"_L1)
        && qEnvironmentVariableIsEmpty("GMOBILE_DT_COMPATIBLES"))
        return std::nullopt;
    const auto f = load(library);
    if (!f)
        return std::nullopt;
    f->init();
    const std::unique_ptr<char *, void (*)(char **)> names(f->compatibles(QFile::encodeName(system).constData(), nullptr),
                                                           f->freeNames);
    if (!names)
        return std::nullopt;
    const std::unique_ptr<GmDeviceInfo, void (*)(void *)> info(f->infoNew(names.get()), f->unref);
    auto *panel = info ? f->infoPanel(info.get()) : nullptr;
    if (!panel)
        return std::nullopt;
    const QSize size(f->panelWidth(panel), f->panelHeight(panel));
    const QRect housing = housingAmong(*f, panel, size);
    return housing.isEmpty() ? std::nullopt : std::optional(DisplayPanel{size, housing});
}

QSizeF housingOn(const DisplayPanel &panel, QSizeF screen)
{
    if (screen.width() >= screen.height() || panel.size.isEmpty())
        return {};
    const double scale = screen.width() / panel.size.width();
    const double middle = panel.size.width() / 2.0;
    const double half = std::max(middle - panel.housing.left(), panel.housing.left() + panel.housing.width() - middle);
    return {2 * half * scale, (panel.housing.top() + panel.housing.height()) * scale};
}

} // namespace velto
