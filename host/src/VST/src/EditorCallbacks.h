#pragma once

#include "vynaudiofilterhost/VST/src/CallGate.h"
#include "vynaudiofilterhost/VST/src/EffectCallback.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace vynaudiofilterhost::vst {

class VSTAudioFilterEditor;

/// What a filter's open editors answer to the effect, in the order of the editors' addresses. The filter owns it.
///
/// Effects call on any thread: Call neither locks, waits nor allocates. The object must outlive the calls.
class EditorCallbacks {
public:
    EditorCallbacks();
    ~EditorCallbacks();

    /// No change when the editor is there already.
    /// [main-thread]
    void Add(VSTAudioFilterEditor* editor, EffectCallback callback);

    /// No change when it isn't there. From the return on its callback isn't running any more, but for a call in which
    /// the calling thread itself is.
    /// [main-thread]
    void Remove(VSTAudioFilterEditor* editor);

    /// The first answer that isn't 0; 0 when there is none.
    /// [any-thread]
    std::intptr_t Call(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);

private:
    using List = std::map<VSTAudioFilterEditor*, std::shared_ptr<EffectCallback const>>;

    void Use(List list);
    bool IsStillThere(List const& walked, VSTAudioFilterEditor* editor) const;

    std::atomic<List const*> mList{nullptr}; ///< null while there is no editor
    CallGate mGate;

    // Main thread.
    std::vector<std::unique_ptr<List const>> mLists; ///< the last is in use, the others by calls of this thread
};

} // namespace vynaudiofilterhost::vst
