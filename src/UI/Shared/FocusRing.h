#pragma once

class QEvent;
class QPainter;
class QRectF;

/// What shows where the keyboard is.
namespace Lumenote::FocusRing {

/// Along the inside of @p rect, whose corners have @p radius.
void paint(QPainter& painter, const QRectF& rect, double radius);

/// The same on a dark surface, where the accent colour is seen without help.
void paintOnDark(QPainter& painter, const QRectF& rect, double radius);

/// Whether @p event asks if a focused button wants the Space key for itself, which it then gets.
bool takesSpace(QEvent* event);

} // namespace Lumenote::FocusRing
