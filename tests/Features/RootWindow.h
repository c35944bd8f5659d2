#pragma once

#include <QImage>

#include <cstdint>

struct xcb_connection_t;

/// What another program sees of the desktop, over a connection of its own. In pixels.
class RootWindow {
public:
    RootWindow();
    ~RootWindow();
    RootWindow(const RootWindow&) = delete;
    RootWindow& operator=(const RootWindow&) = delete;

    QRect rect() const;

    /// What a person would see.
    QImage picture() const;

    std::uint32_t focus() const;
    void setFocus(std::uint32_t window) const;

    void lower(std::uint32_t window) const; ///< Below all others.

    bool grabKeyboard() const;
    void ungrabKeyboard() const;

    /// Windows, pixmaps and all else that the clients with a connection in this process hold.
    int resourcesOf(qint64 processID) const;

private:
    xcb_connection_t* const m_xcb;
    const std::uint32_t m_root;
};
