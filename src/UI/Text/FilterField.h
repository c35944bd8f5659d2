#pragma once

#include <QLineEdit>

namespace Lumenote {

/// A line to type a filter into, on a capsule of its own. Of the keys that mean something in the
/// window around, it takes those only for which it has a use itself.
class FilterField final : public QLineEdit {
    Q_OBJECT

public:
    explicit FilterField(QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool hasUseFor(const QKeyEvent& key) const;
    void addClearButton();
};

} // namespace Lumenote
