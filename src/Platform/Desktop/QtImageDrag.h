#pragma once

#include "Platform/DraggedFiles.h"
#include "Platform/ImageDrag.h"

#include <QMimeData>
#include <QObject>
#include <QPointer>

namespace Platform {

/// Drags by Qt's means.
class QtImageDrag final : public QObject, public ImageDrag {
    Q_OBJECT

public:
    /// Images of more than @p largestBytes are offered as files alone: what doesn't fit into one
    /// message would cost the connection. Clears @p files of what former runs left.
    QtImageDrag(const DraggedFiles& files, qint64 largestBytes);

    void begin(const Payload& payload, OnEnd onEnd) override;

    /// What the drag that is under way, or the last one, offers; null once Qt is done with it.
    QMimeData* offered() const { return m_offered; }

private:
    const DraggedFiles m_files;
    const qint64 m_largestBytes;
    QPointer<QMimeData> m_offered;
};

} // namespace Platform
