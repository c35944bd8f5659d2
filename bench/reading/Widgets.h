#pragma once

#include "Scene.h"

/// The controls that scenes are put together from, drawn in the look of their page.
namespace Lumenote::Bench::Widgets {

enum class ButtonStyle { plain, accent, flat };

double rowHeight(const Page& page);
double buttonWidth(const Page& page, const QString& text);
void button(Page& page, const QRectF& rect, const QString& text, ButtonStyle style);

/// Buttons side by side that end at @p right, the last one in the accent's colour.
void buttonRow(Page& page, double right, double top, const QStringList& texts);

void checkBox(Page& page, QPointF centre, bool isChecked);
void radioButton(Page& page, QPointF centre, bool isChosen);
void toggle(Page& page, QPointF centre, bool isOn);
void field(Page& page, const QRectF& rect, const QString& text);
void progressBar(Page& page, const QRectF& rect, double part);
void scrollBar(Page& page, const QRectF& rect, double part);

/// A small geometric sign without any likeness to a letter, another one for each @p kind.
void icon(Page& page, const QRectF& rect, int kind, const QColor& colour);
void avatar(Page& page, QPointF centre, double radius);

void line(Page& page, QPointF from, QPointF to);
void box(Page& page, const QRectF& rect, const QColor& fill, double radius = 0);
void frame(Page& page, const QRectF& rect, const QColor& fill, double radius = 0);

/// Fills a bar over the whole width with @p title and three window buttons; answers its bottom.
double titleBar(Page& page, const QString& title);

/// Writes the lines of @p text below each other and answers the baseline after the last of them.
double paragraph(Page& page, QPointF baseline, double width, const QString& text, const QFont& font,
    const QColor& colour, double lineFactor = 1.45);

/// The column and the row of the cell @p index in a grid of @p columns.
QPointF gridCell(int index, int columns);

double widest(const QStringList& texts, const QFont& font);

} // namespace Lumenote::Bench::Widgets
