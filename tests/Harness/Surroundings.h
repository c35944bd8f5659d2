#pragma once

#include <QTemporaryDir>

namespace Harness {

/// What makes a test the same on each machine: locale, fonts and drawing, and folders of its own in
/// the place of the user's. To be made before there is an application.
class Surroundings {
public:
    Surroundings();

    bool isComplete() const { return m_isComplete; } ///< Without it no test may run.

private:
    bool pinFolders();

    QTemporaryDir m_home;
    bool m_isComplete;
};

} // namespace Harness
