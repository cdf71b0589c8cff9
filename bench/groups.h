// The contests, by group.
#pragma once

#include <string>
#include <vector>

#include "peer.h"
#include "settings.h"

namespace bench {

/// True when the command line asks for this group.
bool isWanted(const Settings& settings, const std::string& group);

/// True when the command line asks for this work of the pipelines.
bool isWantedWork(const Settings& settings, const std::string& work);

/// Those of `sizes` that the command line asks for.
std::vector<Size> wantedOf(const Settings& settings, std::vector<Size> sizes);

/// Groups c2c, copy, real, path and band: the transforms beside the peers, in place, from one
/// buffer to another and of real images; the kernel's paths beside each other; what a band of rows
/// saves.
void holdTransforms(const Settings& settings);

/// Groups pipeline8, everywhere and pipeline16: whole pipelines of 8-bit pels, those whose filters
/// leave no row and no column out, and those of 16-bit pels.
void holdPipelines(const Settings& settings);

/// Groups tiles and threads: a picture of 12 million pels beside one plane, on two threads beside
/// one.
void holdTiles(const Settings& settings);

/// Group operation: single operations beside a copy that moves as many bytes.
void holdOperations(const Settings& settings);

/// Group first: the first call in a process beside later ones.
void compareFirstCalls(const Settings& settings);

/// Group memory: what 8-bit pipelines take at their peak beyond their images.
void measureMemory(const Settings& settings);

}  // namespace bench
