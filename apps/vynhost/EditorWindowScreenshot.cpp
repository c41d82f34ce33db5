#include "vynhost/EditorWindowConnection.h"

#include <algorithm>
#include <bit>
#include <X11/Xutil.h>

namespace vynhost {

namespace {

struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// The server refuses to read beyond the screen.
std::optional<Area> FindVisibleArea(Display* display, Window window) {
    XWindowAttributes attributes;
    int left = 0;
    int top = 0;
    Window child = 0;
    if (!XGetWindowAttributes(display, window, &attributes) || attributes.map_state != IsViewable ||
        !XTranslateCoordinates(display, window, attributes.root, 0, 0, &left, &top, &child))
        return std::nullopt;
    Area area{std::max(0, -left), std::max(0, -top)};
    area.width = std::min(attributes.width, WidthOfScreen(attributes.screen) - left) - area.x;
    area.height = std::min(attributes.height, HeightOfScreen(attributes.screen) - top) - area.y;
    return area.width > 0 && area.height > 0 ? std::optional(area) : std::nullopt;
}

unsigned char TakeChannel(unsigned long pixel, unsigned long mask) {
    if (mask == 0)
        return 0;
    unsigned long const most = mask >> std::countr_zero(mask);
    return static_cast<unsigned char>(((pixel & mask) >> std::countr_zero(mask)) * 255 / most);
}

void CopyPixels(XImage& image, Area const& area, Screenshot& picture) {
    int const width = std::min(area.width, picture.width - area.x);
    int const height = std::min(area.height, picture.height - area.y);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            unsigned long const pixel = XGetPixel(&image, x, y);
            unsigned char* const rgb = picture.At(area.x + x, area.y + y);
            rgb[0] = TakeChannel(pixel, image.red_mask);
            rgb[1] = TakeChannel(pixel, image.green_mask);
            rgb[2] = TakeChannel(pixel, image.blue_mask);
        }
    }
}

} // namespace

std::optional<Screenshot> EditorWindow::TakeScreenshot() {
    Connection const& own = *mConnection;
    if (IsLost() || own.destroyed)
        return std::nullopt;
    std::optional<Area> const area = FindVisibleArea(own.display, own.window);
    if (!area)
        return std::nullopt;
    XImage* const image = XGetImage(own.display, own.window, area->x, area->y, static_cast<unsigned>(area->width),
                                    static_cast<unsigned>(area->height), AllPlanes, ZPixmap);
    if (!image)
        return std::nullopt;
    Screenshot picture = Screenshot::MakeBlack(own.size.width, own.size.height);
    CopyPixels(*image, *area, picture);
    XDestroyImage(image);
    return picture;
}

} // namespace vynhost
