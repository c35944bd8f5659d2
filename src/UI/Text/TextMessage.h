#pragma once

#include "UI/Text/ExtractedTextState.h"

#include <QWidget>

class QLabel;

namespace Lumenote {

class AccentButton;
class Spinner;

/// What stands in the place of the text while there is none to show. Presses beside its button go
/// on to the parent.
class TextMessage : public QWidget {
    Q_OBJECT

public:
    explicit TextMessage(QWidget* parent);

    void show(const ExtractedTextState& state);

signals:
    void retryRequested();

private:
    class Icon;

    Spinner* m_spinner;
    Icon* m_icon;
    QLabel* m_label;
    AccentButton* m_retry;
};

} // namespace Lumenote
