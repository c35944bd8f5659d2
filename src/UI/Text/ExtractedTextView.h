#pragma once

#include "UI/Shared/Backdrop.h"

#include <QWidget>

class QLabel;

namespace Lumenote {

class AccentButton;
class FilterField;
class SelectableTextArea;
class TextMessage;
class WorkbenchModel;

/// The text face of the card: what was read from the capture, to be filtered, selected and copied,
/// or what there is to say instead. It holds nothing itself: the filter is the model's.
///
/// Presses that hit no control go on to the parent, which the window is moved by.
class ExtractedTextView : public QWidget {
    Q_OBJECT

public:
    ExtractedTextView(WorkbenchModel& model, QWidget* parent); ///< The model outlives it.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fillHeader();
    void refresh();
    void refreshText();
    void refreshBackdrop();
    void copyRows();
    QStringList rows() const;

    WorkbenchModel& m_model;
    Backdrop m_backdrop;
    QWidget* m_header;
    QLabel* m_summary;
    FilterField* m_filter;
    AccentButton* m_copy;
    TextMessage* m_message;
    SelectableTextArea* m_text;
};

} // namespace Lumenote
