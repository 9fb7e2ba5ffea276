#include "linux/tray/Composition.h"

#include <algorithm>

#include <xcb/xcb_renderutil.h>

namespace tray {

namespace {

xcb_render_pictformat_t pictureFormat(const xcb_render_pictforminfo_t* info)
{
    return info != nullptr ? info->id : XCB_NONE;
}

/// A picture in the server's memory; it goes with the object.
class ServerPicture
{
public:
    ServerPicture(
        const x11::Connection& connection, const QImage& picture, xcb_render_pictformat_t format
    )
        : connection(connection.get()),
          pixmap(xcb_generate_id(this->connection)),
          id(xcb_generate_id(this->connection))
    {
        const auto width = static_cast<std::uint16_t>(picture.width());
        const auto height = static_cast<std::uint16_t>(picture.height());
        xcb_create_pixmap(this->connection, ALPHA_DEPTH, pixmap, connection.root(), width, height);
        put(picture, width, height);
        xcb_render_create_picture(this->connection, id, pixmap, format, 0, nullptr);
    }

    ~ServerPicture()
    {
        xcb_render_free_picture(connection, id);
        xcb_free_pixmap(connection, pixmap);
    }

    ServerPicture(const ServerPicture&) = delete;
    ServerPicture& operator=(const ServerPicture&) = delete;
    ServerPicture(ServerPicture&&) = delete;
    ServerPicture& operator=(ServerPicture&&) = delete;

    void over(xcb_render_picture_t target, const QImage& picture) const
    {
        xcb_render_composite(
            connection,
            XCB_RENDER_PICT_OP_OVER,
            id,
            XCB_NONE,
            target,
            0,
            0,
            0,
            0,
            0,
            0,
            static_cast<std::uint16_t>(picture.width()),
            static_cast<std::uint16_t>(picture.height())
        );
    }

private:
    void put(const QImage& picture, std::uint16_t width, std::uint16_t height) const
    {
        const xcb_gcontext_t context = xcb_generate_id(connection);
        xcb_create_gc(connection, context, pixmap, 0, nullptr);
        xcb_put_image(
            connection,
            XCB_IMAGE_FORMAT_Z_PIXMAP,
            pixmap,
            context,
            width,
            height,
            0,
            0,
            0,
            ALPHA_DEPTH,
            static_cast<std::uint32_t>(picture.sizeInBytes()),
            picture.constBits()
        );
        xcb_free_gc(connection, context);
    }

    xcb_connection_t* connection;
    xcb_pixmap_t pixmap;
    xcb_render_picture_t id;
};

} // namespace

bool hasAlpha(const x11::Connection& connection, xcb_visualid_t visual)
{
    auto depths = xcb_screen_allowed_depths_iterator(&connection.screen());
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        const auto* first = xcb_depth_visuals(depths.data);
        const auto* end = first + xcb_depth_visuals_length(depths.data);
        const bool isHere = std::any_of(first, end, [visual](const xcb_visualtype_t& candidate) {
            return candidate.visual_id == visual;
        });
        if (isHere) {
            return depths.data->depth == ALPHA_DEPTH;
        }
    }
    return false;
}

void compose(const x11::Connection& connection, const Canvas& canvas, const QImage& picture)
{
    const auto* formats = xcb_render_util_query_formats(connection.get());
    const auto* visual = xcb_render_util_find_visual_format(formats, canvas.visual);
    const xcb_render_pictformat_t source =
        pictureFormat(xcb_render_util_find_standard_format(formats, XCB_PICT_STANDARD_ARGB_32));
    if (visual == nullptr || source == XCB_NONE || picture.isNull()) {
        return;
    }
    const xcb_render_picture_t target = xcb_generate_id(connection.get());
    xcb_render_create_picture(connection.get(), target, canvas.window, visual->format, 0, nullptr);
    xcb_clear_area(connection.get(), 0, canvas.window, 0, 0, 0, 0);
    ServerPicture(connection, picture, source).over(target, picture);
    xcb_render_free_picture(connection.get(), target);
    connection.flush();
}

} // namespace tray
