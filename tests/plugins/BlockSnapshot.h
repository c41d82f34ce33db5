#pragma once

#include "plugins/FixtureSnapshot.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"

namespace vynfixtures {

/// Logs a process call and keeps its facts. Takes no lock and allocates nothing.
void SnapshotBlock(Steinberg::Vst::ProcessData const& data, FixtureBlock& block);

} // namespace vynfixtures
