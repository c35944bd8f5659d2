#pragma once

#include <QAccessibleWidget>
#include <QList>

namespace Lumenote {

class CaptureFace;

/// The capture as assistive programs see it: beside the widgets on it, each line of its text is a
/// child that can be pressed. Main thread.
class CaptureAccessibility : public QAccessibleWidget {
public:
    explicit CaptureAccessibility(CaptureFace& face);
    ~CaptureAccessibility() override;
    CaptureAccessibility(const CaptureAccessibility&) = delete;
    CaptureAccessibility& operator=(const CaptureAccessibility&) = delete;

    /// From now on every CaptureFace has one, once somebody asks for it.
    static void install();

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;

private:
    class Line;

    CaptureFace& face() const;
    Line* line(int index) const;
    void forgetLines();

    mutable QList<QAccessible::Id> m_lines; ///< By index; zero for one that nobody asked for.
};

} // namespace Lumenote
