#pragma once

#include <QAbstractNativeEventFilter>

#include <functional>

class QMimeData;

namespace Platform {

/// Answers receivers of a drag that ask without telling which: they give no time, and ask from
/// another window than the one the drag is over. Qt answers none of these. Main thread, while there
/// is a QApplication.
class DragAnswers : public QAbstractNativeEventFilter {
public:
    /// @p offered gives what is dragged, or null.
    explicit DragAnswers(std::function<QMimeData*()> offered);
    ~DragAnswers() override;
    DragAnswers(const DragAnswers&) = delete;
    DragAnswers& operator=(const DragAnswers&) = delete;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    /// The most bytes that the server takes at once; what is more ends the connection.
    static qint64 largestAnswer();

private:
    std::function<QMimeData*()> m_offered;
};

} // namespace Platform
