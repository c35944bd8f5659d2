#include "UI/Capture/CaptureAccessibility.h"

#include "UI/Capture/CaptureFace.h"

namespace Lumenote {

/// One line. It has no object: it lives in the registry of interfaces, until the lines change.
class CaptureAccessibility::Line : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Line(CaptureFace& face, int index)
        : m_face(face)
        , m_index(index)
    {
    }

    int index() const { return m_index; }

    bool isValid() const override { return m_index < m_face.model().lines().size(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(&m_face);
    }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name && isValid())
            return m_face.model().lines().at(m_index).text;
        return kind == QAccessible::Description ? CaptureFace::lineTip() : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override { }

    QRect rect() const override
    {
        const auto rect = m_face.liveText().rect(m_index);
        if (!rect)
            return {};
        return {m_face.mapToGlobal(rect->topLeft()).toPoint(), rect->size().toSize()};
    }
    QAccessible::Role role() const override { return QAccessible::Button; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = rect().isEmpty() || !m_face.isVisible();
        state.invalid = !isValid();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override
    {
        if (name == pressAction() && isValid())
            m_face.liveText().copy(m_index);
    }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

private:
    CaptureFace& m_face;
    const int m_index;
};

CaptureAccessibility::CaptureAccessibility(CaptureFace& face)
    : QAccessibleWidget(&face, QAccessible::List, CaptureFace::tr("Captured image"))
{
    QObject::connect(&face.liveText(), &LiveTextLayer::linesChanged, &face, [this] {
        forgetLines();
        QAccessibleEvent reordered(object(), QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&reordered);
    });
}

CaptureAccessibility::~CaptureAccessibility()
{
    forgetLines();
}

void CaptureAccessibility::install()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory([](const QString& /*type*/, QObject* object) {
            auto* const face = qobject_cast<CaptureFace*>(object);
            return face != nullptr
                ? static_cast<QAccessibleInterface*>(new CaptureAccessibility(*face))
                : nullptr;
        });
        return true;
    }();
    Q_UNUSED(isInstalled);
}

CaptureFace& CaptureAccessibility::face() const
{
    return *static_cast<CaptureFace*>(object());
}

int CaptureAccessibility::childCount() const
{
    const auto& text = face().liveText();
    const auto lines = text.isActive() ? face().model().lines().size() : 0;
    return QAccessibleWidget::childCount() + static_cast<int>(lines);
}

CaptureAccessibility::Line* CaptureAccessibility::line(int index) const
{
    m_lines.resize(face().model().lines().size());
    if (index < 0 || index >= m_lines.size())
        return nullptr;
    auto& id = m_lines[index];
    if (id == 0)
        id = QAccessible::registerAccessibleInterface(new Line(face(), index));
    return static_cast<Line*>(QAccessible::accessibleInterface(id));
}

QAccessibleInterface* CaptureAccessibility::child(int index) const
{
    const int widgets = QAccessibleWidget::childCount();
    return index < widgets ? QAccessibleWidget::child(index) : line(index - widgets);
}

int CaptureAccessibility::indexOfChild(const QAccessibleInterface* child) const
{
    if (const auto* const line = dynamic_cast<const Line*>(child))
        return QAccessibleWidget::childCount() + line->index();
    return QAccessibleWidget::indexOfChild(child);
}

QAccessibleInterface* CaptureAccessibility::childAt(int x, int y) const
{
    if (auto* const widget = QAccessibleWidget::childAt(x, y))
        return widget;
    const auto hit = face().liveText().lineAt(face().mapFromGlobal(QPointF(x, y)));
    return hit ? line(static_cast<int>(*hit)) : nullptr;
}

void CaptureAccessibility::forgetLines()
{
    for (const auto id : std::exchange(m_lines, {}))
        if (id != 0)
            QAccessible::deleteAccessibleInterface(id);
}

} // namespace Lumenote
