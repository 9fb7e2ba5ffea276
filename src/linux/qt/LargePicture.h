// An icon from a file that takes long to decode. Painting never waits for it: it is decoded on a
// worker, another icon stands in until then, and what is on the screen is painted again. Whoever
// asks for pixels waits and gets the picture. A file that cannot be decoded leaves the icon that
// stands in. Main thread only.
#pragma once

#include "platform/DispatchQueues.h"

#include <QIcon>
#include <QIconEngine>
#include <QImage>
#include <QString>

#include <memory>

namespace qt {

class LargePicture final : public QIconEngine
{
public:
    /// The queues must outlive this.
    LargePicture(const QString& path, const QIcon& standIn, platform::DispatchQueues& queues);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;

    bool isNull() override { return false; }

private:
    struct Content;

    void decodeAside();
    static void deliver(const QImage& image, const std::weak_ptr<Content>& wanted);

    std::shared_ptr<Content> content; // shared by the copies
    platform::DispatchQueues& queues;
};

} // namespace qt
