#pragma once

#include "Platform/DisplayServer.h"

#include <QRect>
#include <QRgb>

#include <memory>

/// A desktop of one display server that the contract can change. What every display server has to
/// answer is in DisplayServerContract.cpp, which is compiled into a test program for each.
class ContractWorld {
public:
    virtual ~ContractWorld() = default;

    virtual Platform::DisplayServer& server() = 0;

    /// A window of another program in front of all others, of one colour, the id of which is
    /// answered. @p rect in points of the first display, from its upper left corner.
    virtual quint32 showWindow(const QRect& rect, QRgb color, const QString& title) = 0;

    /// The same of this program.
    virtual void showOwnWindow(const QRect& rect) = 0;

    virtual void closeWindow(quint32 id) = 0;
};

/// Defined once in each of these programs.
std::unique_ptr<ContractWorld> makeContractWorld();
