#include "UI/Shared/Transitions.h"

#include "UI/Shared/SnapshotEffect.h"

#include <QPainter>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace Lumenote::Transitions {

namespace {

/// What has just gone.
class Afterimage : public QWidget {
public:
    Afterimage(QWidget& gone, double toScale)
        : QWidget(gone.parentWidget())
        , m_picture(gone.grab())
        , m_toScale(toScale)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(gone.geometry());
        show();
        raise();
    }

    void setProgress(double progress)
    {
        m_progress = progress;
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        SnapshotEffect::paint(
            painter, m_picture, rect(), 1 - m_progress, 1 + (m_toScale - 1) * m_progress);
    }

private:
    const QPixmap m_picture;
    const double m_toScale;
    double m_progress = 0;
};

} // namespace

void enter(
    QWidget& widget, const Motion::Timing& timing, double fromScale, std::function<void()> onEnd)
{
    auto* const effect = new SnapshotEffect;
    widget.setGraphicsEffect(effect); // Which deletes one that was there, and so ends its motion.
    effect->show(0, fromScale);
    auto* const run = new Motion::Run(
        timing,
        [effect, fromScale](
            double progress) { effect->show(progress, fromScale + (1 - fromScale) * progress); },
        effect);
    // Later, since the effect takes the animation with it.
    QObject::connect(
        run, &QAbstractAnimation::finished, &widget,
        [&widget, effect = QPointer(effect), onEnd = std::move(onEnd)] {
            if (effect)
                widget.setGraphicsEffect(nullptr);
            if (effect && onEnd)
                onEnd();
        },
        Qt::QueuedConnection);
    run->restart();
}

void refresh(QWidget& widget)
{
    if (auto* const effect = dynamic_cast<SnapshotEffect*>(widget.graphicsEffect()))
        effect->forget();
}

void leave(QWidget& widget, const Motion::Timing& timing, double toScale)
{
    if (!widget.isVisible() || !Motion::isEnabled())
        return;
    auto* const afterimage = new Afterimage(widget, toScale);
    auto* const run = new Motion::Run(
        timing, [afterimage](double progress) { afterimage->setProgress(std::min(progress, 1.0)); },
        afterimage);
    QObject::connect(run, &QAbstractAnimation::finished, afterimage, &QObject::deleteLater);
    run->restart();
}

} // namespace Lumenote::Transitions
