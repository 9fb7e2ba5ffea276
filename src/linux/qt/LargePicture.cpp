#include "linux/qt/LargePicture.h"

#include <QGuiApplication>
#include <QImageReader>
#include <QPixmap>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace qt {

struct LargePicture::Content
{
    QString path;
    QIcon icon; // at first the one that stands in
    bool asked = false;
    bool decoded = false;

    void take(const QImage& image)
    {
        if (!std::exchange(decoded, true) && !image.isNull()) {
            icon = QIcon(QPixmap::fromImage(image));
        }
    }
};

namespace {

/// As large as icons are drawn on dense screens; what a file has more is not kept.
constexpr int LARGEST_SIDE = 256;

/// Any thread.
QImage decode(const QString& path)
{
    const QImage image = QImageReader(path).read();
    return std::max(image.width(), image.height()) > LARGEST_SIDE
               ? image.scaled(
                     LARGEST_SIDE, LARGEST_SIDE, Qt::KeepAspectRatio, Qt::SmoothTransformation
                 )
               : image;
}

void paintWindowsAgain()
{
    for (QWindow* window : QGuiApplication::allWindows()) {
        if (window->isVisible()) {
            window->requestUpdate();
        }
    }
}

} // namespace

LargePicture::LargePicture(
    const QString& path, const QIcon& standIn, platform::DispatchQueues& queues
)
    : content(std::make_shared<Content>(Content{.path = path, .icon = standIn})),
      queues(queues)
{
}

void LargePicture::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    if (!content->decoded && !std::exchange(content->asked, true)) {
        decodeAside();
    }
    content->icon.paint(painter, rect, Qt::AlignCenter, mode, state);
}

/// The worker has no part in the content: its pixels must end on the main thread.
void LargePicture::decodeAside()
{
    platform::DispatchQueues& both = queues;
    both.asyncGlobal([&both, path = content->path, wanted = std::weak_ptr(content)] {
        both.asyncMain([image = decode(path), wanted] { deliver(image, wanted); });
    });
}

void LargePicture::deliver(const QImage& image, const std::weak_ptr<Content>& wanted)
{
    if (const std::shared_ptr<Content> there = wanted.lock()) {
        there->take(image);
        paintWindowsAgain();
    }
}

QPixmap LargePicture::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    if (!content->decoded) {
        content->take(decode(content->path));
    }
    return content->icon.pixmap(size, 1.0, mode, state);
}

QSize LargePicture::actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    return content->icon.actualSize(size, mode, state);
}

QIconEngine* LargePicture::clone() const
{
    return new LargePicture(*this);
}

} // namespace qt
