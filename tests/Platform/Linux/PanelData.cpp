// Stands in for libgmobile.so.0: one device, "stand-in,phone", whose camera is at the middle of a display of 1080 by 2400, with
// another hole in a corner. It reads its name from the device tree as the library does.
#include <cstdio>
#include <cstring>
#include <string>

extern "C" {

struct Rect {
    int x, y, width, height;
};

void gm_init() { }

char **gm_device_tree_get_compatibles(const char *system, void **)
{
    static char name[64];
    static char *names[]{name, nullptr};
    auto *file = std::fopen((std::string(system) + "/firmware/devicetree/base/compatible").c_str(), "r");
    if (!file)
        return nullptr;
    name[std::fread(name, 1, sizeof name - 1, file)] = 0;
    std::fclose(file);
    return names;
}

void *gm_device_info_new(const char *const *names)
{
    static int info;
    return std::strcmp(names[0], "stand-in,phone") == 0 ? &info : nullptr;
}

void *gm_device_info_get_display_panel(void *info)
{
    return info;
}
void *gm_display_panel_get_cutouts(void *panel)
{
    return panel;
}
int gm_display_panel_get_x_res(void *)
{
    return 1080;
}
int gm_display_panel_get_y_res(void *)
{
    return 2400;
}
unsigned g_list_model_get_n_items(void *)
{
    return 2;
}

void *g_list_model_get_item(void *, unsigned index)
{
    static Rect cutouts[]{{390, 0, 300, 90}, {20, 10, 60, 60}};
    return &cutouts[index];
}

const Rect *gm_cutout_get_bounds(void *cutout)
{
    return static_cast<Rect *>(cutout);
}
void g_object_unref(void *) { }
void g_strfreev(char **) { }
}
