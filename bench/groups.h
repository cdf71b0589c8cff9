// The contests, by group.
#pragma once

#include <string>
#include <vector>

#include "peer.h"
#include "settings.h"

namespace bench {

/// True when the command line asks for this group.
bool isWanted(const Settings& settings, const std::string& group);

/// Those of `sizes` that the command line asks for.
std::vector<Size> wantedOf(const Settings& settings, std::vector<Size> sizes);

/// Groups c2c, real, path and band: the kernel beside the peers, its paths beside each other, and
/// what a band of rows saves.
void holdTransforms(const Settings& settings);

/// Groups pipeline8 and pipeline16.
void holdPipelines(const Settings& settings);

/// Group operation: single operations beside a copy that moves as many bytes.
void holdOperations(const Settings& settings);

/// Group first: the first call in a process beside later ones.
void compareFirstCalls(const Settings& settings);

/// Group memory: what the in-place 8-bit pipeline takes at its peak.
void measureMemory(const Settings& settings);

}  // namespace bench
