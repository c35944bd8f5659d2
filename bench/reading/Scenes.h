#pragma once

#include "Scene.h"

/// What the pictures show. Each draws a whole picture in the look, the language and from the texts
/// of its page.
namespace Lumenote::Bench::Scenes {

// Dialogs and controls.
void dialog(Page& page);
void menu(Page& page);
void toolBar(Page& page);
void settings(Page& page);
void radioList(Page& page);
void form(Page& page);
void colouredButtons(Page& page);
void badges(Page& page);
void notifications(Page& page);
void tooltip(Page& page);
void login(Page& page);
void statusBar(Page& page);

// What remains when people cut out a part of the screen.
void tightLine(Page& page);
void tightWord(Page& page);
void tightNumber(Page& page);
void tightParagraph(Page& page);
void keyList(Page& page);
void steps(Page& page);
void selectedText(Page& page);

// Lists and tables.
void fileList(Page& page);
void propertyTable(Page& page);
void ruledTable(Page& page);
void spreadsheet(Page& page);
void calendar(Page& page);
void sideBar(Page& page);
void iconGrid(Page& page);
void processTable(Page& page);
void hexTable(Page& page);

// Pages of a browser.
void article(Page& page);
void searchResults(Page& page);
void chat(Page& page);
void mailList(Page& page);
void shop(Page& page);
void dashboard(Page& page);
void chart(Page& page);
void comments(Page& page);
void breadcrumbs(Page& page);
void hero(Page& page);

// Source code and terminals.
void editor(Page& page);
void terminalListing(Page& page);
void versionLog(Page& page);
void compilerOutput(Page& page);
void prompt(Page& page);

// Text on photographs and gradients.
void captionBar(Page& page);
void photoTitle(Page& page);
void gradientCard(Page& page);
void playerOverlay(Page& page);
void photoGrid(Page& page);
void desktop(Page& page);
void skyline(Page& page);
void brightPhoto(Page& page);

// Whole screens full of text.
void denseEditor(Page& page);
void denseDocument(Page& page);
void denseMixed(Page& page);
void denseEditor4k(Page& page);
void denseDocument4k(Page& page);
void denseDocumentDoubled(Page& page);

/// One column of @p lines lines.
void growingLines(Page& page, int lines);
/// The same few lines on ever more pixels.
void growingPixels(Page& page, QSize pixels);

// No text at all.
void gradients(Page& page);
void photograph(Page& page);
void bareSkyline(Page& page);
void iconBar(Page& page);
void bareCharts(Page& page);
void patterns(Page& page);
void bars(Page& page);
void avatars(Page& page);
void emptyWindow(Page& page);

/// A small settings dialog in @p family with @p texts, for scripts other than Latin.
void scriptDialog(Page& page, const QString& family, const QStringList& texts);

} // namespace Lumenote::Bench::Scenes
