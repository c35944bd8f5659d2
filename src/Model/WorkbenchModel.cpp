#include "Model/WorkbenchModel.h"

#include "OCR/OCRService.h"
#include "Platform/Tasks.h"

#include <utility>

namespace Lumenote {

namespace {

QSizeF sizeInPoints(const QSizeF& pointSize, const QSize& pixelSize)
{
    return pointSize.width() > 0 && pointSize.height() > 0 ? pointSize : QSizeF(pixelSize);
}

} // namespace

std::shared_ptr<WorkbenchModel> WorkbenchModel::create(const QImage& image, const QSizeF& pointSize,
    const std::optional<StoredText>& storedText, const Services& services)
{
    if (image.isNull())
        return nullptr;
    std::shared_ptr<WorkbenchModel> model(new WorkbenchModel(image, pointSize, services));
    model->prepareDisplay();
    if (storedText)
        model->adopt(*storedText);
    else
        model->startRecognition();
    return model;
}

WorkbenchModel::WorkbenchModel(const QImage& image, const QSizeF& pointSize, Services services)
    : m_image(image)
    , m_pointSize(sizeInPoints(pointSize, image.size()))
    , m_services(std::move(services))
{
    m_slowWatch.setSingleShot(true);
    connect(&m_slowWatch, &QTimer::timeout, this, [this] {
        m_awaitingModels = true;
        emit recognitionChanged();
    });
    m_statusTimer.setSingleShot(true);
    connect(&m_statusTimer, &QTimer::timeout, this, [this] {
        m_statusMessage.reset();
        emit statusMessageChanged();
    });
}

WorkbenchModel::~WorkbenchModel()
{
    m_recognition.request_stop();
}

void WorkbenchModel::setTextQuery(const QString& query)
{
    if (query == m_textQuery)
        return;
    m_textQuery = query;
    m_matches = m_index.matches(query);
    emit textQueryChanged();
}

QString WorkbenchModel::visibleText() const
{
    if (m_textQuery.isEmpty())
        return m_displayText;
    QStringList lines;
    lines.reserve(m_matches.size());
    for (const auto& match : m_matches)
        lines.append(m_visibleLines.at(match.row));
    return lines.join(u'\n');
}

void WorkbenchModel::setPendingTextReveal(bool isPending)
{
    if (isPending == m_pendingTextReveal)
        return;
    m_pendingTextReveal = isPending;
    emit pendingTextRevealChanged();
}

void WorkbenchModel::setOnProcessedTextChanged(std::function<void(const StoredText&)> callback)
{
    m_onProcessedTextChanged = std::move(callback);
}

void WorkbenchModel::adopt(const StoredText& text)
{
    QList<OCRLine> lines;
    lines.reserve(text.lines.size());
    for (const auto& line : text.lines)
        lines.append(
            {.text = line.text, .boundingBox = QRectF(line.x, line.y, line.width, line.height)});
    m_isRecognizing = false;
    setLines(lines);
    m_pendingTextReveal = !lines.isEmpty();
}

void WorkbenchModel::startRecognition()
{
    m_recognition.request_stop();
    m_recognition = std::stop_source();
    m_recognitionInterrupted = false;
    m_isRecognizing = true;
    m_recognitionFailed = false;
    m_awaitingModels = m_services.ocr->isWarmingUp();
    const auto generation = ++m_recognitionGeneration;
    m_slowWatch.start(m_services.slowRecognition);
    Platform::whenFinished(m_services.ocr->recognize(m_image, m_recognition.get_token()), this,
        [this, generation](const OCRResult& result) { takeResult(result, generation); });
    emit recognitionChanged();
}

void WorkbenchModel::cancelRecognition()
{
    m_recognition.request_stop();
    m_slowWatch.stop();
    if (m_isRecognizing && !m_recognitionInterrupted) {
        m_recognitionInterrupted = true;
        emit recognitionChanged();
    }
}

void WorkbenchModel::takeResult(const OCRResult& result, int generation)
{
    if (generation != m_recognitionGeneration)
        return;
    m_slowWatch.stop();
    m_isRecognizing = false;
    m_awaitingModels = false;
    m_recognitionFailed = result.interrupted;
    setLines(result.lines);
    const bool wasPending = std::exchange(m_pendingTextReveal, !result.lines.isEmpty());
    emit recognitionChanged();
    emit textChanged();
    if (m_pendingTextReveal != wasPending)
        emit pendingTextRevealChanged();
    if (!result.interrupted && m_onProcessedTextChanged)
        m_onProcessedTextChanged(processedText());
}

void WorkbenchModel::setLines(const QList<OCRLine>& lines)
{
    m_lines = lines;
    m_visibleLines.clear();
    m_visibleWordCount = 0;
    for (const auto& line : lines) {
        m_visibleLines.append(line.text);
        m_visibleWordCount += TextSearch::wordCount(line.text);
    }
    m_displayText = m_visibleLines.join(u'\n');
    m_index = TextSearch::Index(m_visibleLines);
    m_matches = m_index.matches(m_textQuery);
}

StoredText WorkbenchModel::processedText() const
{
    StoredText text;
    text.lines.reserve(m_lines.size());
    for (const auto& line : m_lines) {
        const auto& box = line.boundingBox;
        text.lines.append({.text = line.text,
            .x = box.x(),
            .y = box.y(),
            .width = box.width(),
            .height = box.height()});
    }
    return text;
}

} // namespace Lumenote
