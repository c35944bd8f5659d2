#pragma once

#include "Picture.h"

#include <optional>

namespace Lumenote::Bench {

/// What the command was asked to do.
struct Options {
    QString folder; ///< Of the pictures.
    QString lumenote; ///< The program to measure.
    QString group; ///< Only pictures of this kind; empty for all.
    std::optional<Split> split; ///< Both halves when not set.
    QStringList readers;
    QString jsonFile; ///< Where the measurements go as well; empty for nowhere.
    int runs = 5; ///< Of each command whose time is compared.
    bool drawsOnly = false;
    bool listsErrors = false;
    bool accuracyOnly = false; ///< Leaves out what takes the most time: the timings.
    QStringList doubling; ///< A picture and the file for its doubled copy: do nothing else.
};

/// Reads the command line; ends the program on a mistake in it.
Options parseOptions(const QStringList& arguments);

} // namespace Lumenote::Bench
