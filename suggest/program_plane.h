// Which plane the program filters a picture in.
#pragma once

#include <filt/freqfilt.h>

#include <optional>

/// One axis of the choice: the smallest side in which the picture has its border, or that of the
/// tiles it is cut into.
///
/// A mirror needs the margin at either end: what is given, else the filter's reach, but at most a
/// quarter of the side. Sides go up to `tile` when it is given, or without it to 1024; to 2048
/// where that saves tiles: for a margin above 256 pels, and for one plane in place of three tiles
/// or more.
struct mvPlaneAxis {
    long picture;    // pels along the axis
    long reach;      // of the filter
    long least = 1;  // the smallest side that the filter goes into
    mvBorder border = mvBorder::mirror;
    std::optional<long> tile{};
    std::optional<long> margin{};

    /// The side of the plane.
    long side() const;

    /// How many planes of that side the axis takes; 0 when a given margin leaves nothing of them.
    long planes(long side) const;

  private:
    long marginOf(long side) const;
    bool fits(long side) const;
    long usualTile() const;
    bool isBetterCut(long side) const;
};

/// The plane for a picture and a filter of that reach, when nothing is said of it.
mvPair<long> mfProgramPlane(mvPair<long> picture, mvPair<long> reach);
