#pragma once

#include "Model/AnnotationEdits.h"
#include "Model/FinalImage.h"
#include "Model/ImageCopies.h"
#include "Model/ImageSaves.h"
#include "Model/StoredText.h"
#include "Model/TextSearch.h"
#include "OCR/OCRResult.h"

#include <QDateTime>
#include <QFuture>
#include <QImage>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace Platform {
class Pasteboard;
class SavePanel;
} // namespace Platform

namespace Lumenote {

class OCRService;

/// What a drag carries into another program.
struct DraggableImage {
    QFuture<FinalImage::Png> png; ///< May still be in the making.
    QString name; ///< A file name.
    QImage thumbnail; ///< The capture without its annotations; null until it is displayed.
};

/// The document of one capture: its bitmap, the text read from it, the annotations on it, and what
/// the user is told in passing. Shared by its entry in the history and the window that shows it.
///
/// Main thread only; recognition, and everything that goes over all pixels, runs elsewhere and
/// comes back as signals and futures. A model that goes away takes its recognition with it, but
/// what was copied or saved before is still carried out.
class WorkbenchModel : public QObject {
    Q_OBJECT
public:
    /// What every model of the program works with; all of it outlives the models.
    struct Services {
        OCRService* ocr = nullptr;
        Platform::Pasteboard* pasteboard = nullptr;
        Platform::SavePanel* savePanel = nullptr;
        std::shared_ptr<ImageCopies> copies = std::make_shared<ImageCopies>();
        std::shared_ptr<ImageSaves> saves = std::make_shared<ImageSaves>();
        std::function<QDateTime()> now = [] { return QDateTime::currentDateTimeUtc(); };
        std::chrono::milliseconds slowRecognition{1200}; ///< Told as waiting for models from then.
        std::chrono::milliseconds messageDuration{1100};
    };

    /// The document of @p image, shown at @p pointSize or, where that isn't positive, at its size
    /// in pixels. Takes over @p storedText as it stands, or starts a recognition where there is
    /// none. Null for a null image.
    static std::shared_ptr<WorkbenchModel> create(const QImage& image, const QSizeF& pointSize,
        const std::optional<StoredText>& storedText, const Services& services);

    ~WorkbenchModel() override;

    /// The capture as it came, in its own colour space: for export, not to be painted.
    const QImage& image() const { return m_image; }
    QSize pixelSize() const { return m_image.size(); }
    QSizeF pointSize() const { return m_pointSize; }

    // What is shown, without annotations: in sRGB, and in a format that is painted fast

    /// At full size. Shares the capture's pixels where they can be painted as they are; otherwise
    /// null until displayChanged().
    const QImage& displayImage() const { return m_displayImage; }
    /// At most @p longEdge pixels long, and at most `longestThumbnail`; never enlarged. Null until
    /// displayChanged().
    QImage thumbnail(int longEdge) const;
    /// For a blurred backdrop: a thumbnail of 64 pixels. Null until displayChanged().
    const QImage& backdropImage() const { return m_backdropImage; }

    static constexpr int longestThumbnail = 200;

    // Text

    const QList<OCRLine>& lines() const { return m_lines; }
    /// The text of every line; the filter doesn't narrow it.
    const QStringList& visibleLines() const { return m_visibleLines; }
    qsizetype visibleWordCount() const { return m_visibleWordCount; }
    const QString& displayText() const { return m_displayText; } ///< All of it as one string.
    const QString& textQuery() const { return m_textQuery; } ///< The filter the user typed.
    void setTextQuery(const QString& query);
    /// What the filter leaves of `visibleLines`; changes with either.
    const QList<TextSearch::Match>& matches() const { return m_matches; }
    /// The same as one string.
    QString visibleText() const;

    bool isRecognizing() const { return m_isRecognizing; }
    bool recognitionFailed() const { return m_recognitionFailed; } ///< The last did not finish.
    bool recognitionInterrupted() const { return m_recognitionInterrupted; } ///< From outside.
    /// The recognition waits for its models, or takes so long that it probably does.
    bool awaitingModels() const { return m_awaitingModels; }

    /// Begins a recognition, or begins again; what an earlier one finds is dropped.
    void startRecognition();
    /// Asks a running recognition to stop. It ends as failed once the recogniser has answered.
    void cancelRecognition();

    /// Whether the text layer should show itself once; the view that did clears it.
    bool pendingTextReveal() const { return m_pendingTextReveal; }
    void setPendingTextReveal(bool isPending);

    /// Called with the text of each recognition that finished.
    void setOnProcessedTextChanged(std::function<void(const StoredText&)> callback);

    // Annotations

    const QList<Annotation>& annotations() const { return m_edits.annotations(); }
    bool canUndo() const { return m_edits.canUndo(); }
    bool canRedo() const { return m_edits.canRedo(); }
    /// Annotations, or a way back to some: work that exists nowhere else.
    bool hasUnsavedWork() const;

    const std::optional<CanvasTool>& activeTool() const { return m_activeTool; }
    /// A drawing tool takes the selection away; the pointer and no tool leave it.
    void setActiveTool(const std::optional<CanvasTool>& tool);
    /// Nothing, or the id of one of the annotations.
    const std::optional<QUuid>& selectedAnnotationID() const { return m_selectedAnnotationID; }
    void setSelectedAnnotationID(const std::optional<QUuid>& id);

    void addAnnotation(const Annotation& annotation); ///< On top; does not select it.
    /// Between these two, any number of updates is one undo step.
    void beginAnnotationEdit();
    void updateAnnotation(const Annotation& annotation);
    void endAnnotationEdit();
    void deleteSelectedAnnotation();
    /// These two do nothing in the middle of an edit.
    void undo();
    void redo();

    // Output: of the finished image, the capture with its annotations as they are at the call

    /// Gives up the finished image, which is otherwise kept until the annotations change.
    void releaseCaches();

    /// Answers whether the pasteboard has it; it hasn't where something newer was copied while the
    /// image was made.
    QFuture<bool> copyImage();
    /// At once; nothing where the image can't even be begun.
    std::optional<DraggableImage> draggableImage();
    bool copyText(bool asCodeBlock); ///< What the filter leaves.
    bool copyRecognizedText(); ///< All of it, whatever the filter.
    bool copyText(const QStringList& lines);
    /// Asks where to, and then writes in the background the image as it is at the answer.
    void saveImage();

    /// @p text as a Markdown code block, whatever backticks it has itself.
    static QString fenced(const QString& text);

    const std::optional<QString>& statusMessage() const { return m_statusMessage; }
    /// Tells the user something in passing.
    void flash(const QString& message);

signals:
    void displayChanged(); ///< All that is shown is there; once for each model.
    void textChanged(); ///< Lines, and all that follows from them.
    void textQueryChanged();
    void recognitionChanged();
    void pendingTextRevealChanged();
    void annotationsChanged();
    void undoChanged();
    void activeToolChanged();
    void selectedAnnotationIDChanged();
    void statusMessageChanged();

private:
    struct Display;

    WorkbenchModel(const QImage& image, const QSizeF& pointSize, Services services);

    void prepareDisplay();
    void takeDisplay(const Platform::Result<Display>& display);

    void adopt(const StoredText& text);
    void takeResult(const OCRResult& result, int generation);
    void setLines(const QList<OCRLine>& lines);
    StoredText processedText() const;

    void annotationsWereAssigned();

    const FinalImage& finalImage();
    bool copy(const QString& text, const QString& message);
    void write(const std::filesystem::path& path);
    void tellCopied(ImageCopies::Outcome outcome);
    void tellSaved(const Platform::Result<void>& saved, const FinalImage& image);
    QString suggestedName() const;

    const QImage m_image;
    const QSizeF m_pointSize;
    const Services m_services;
    QImage m_displayImage;
    QImage m_preview; ///< The largest thumbnail.
    QImage m_backdropImage;

    QList<OCRLine> m_lines;
    QStringList m_visibleLines;
    qsizetype m_visibleWordCount = 0;
    QString m_displayText;
    QString m_textQuery;
    TextSearch::Index m_index; ///< Of the visible lines.
    QList<TextSearch::Match> m_matches;
    bool m_pendingTextReveal = false;

    bool m_isRecognizing = true;
    bool m_recognitionFailed = false;
    bool m_recognitionInterrupted = false;
    bool m_awaitingModels = false;
    int m_recognitionGeneration =
        0; ///< Of the latest recognition; what an older one gives is stale.
    std::stop_source m_recognition;
    QTimer m_slowWatch;
    std::function<void(const StoredText&)> m_onProcessedTextChanged;

    AnnotationEdits m_edits;
    std::optional<CanvasTool> m_activeTool;
    std::optional<QUuid> m_selectedAnnotationID;

    FinalImage m_finalImage; ///< None until it is wanted.
    std::optional<QString> m_statusMessage;
    QTimer m_statusTimer;
};

} // namespace Lumenote
