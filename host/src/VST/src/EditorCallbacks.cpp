#include "vynaudiofilterhost/VST/src/EditorCallbacks.h"

#include <utility>

namespace vynaudiofilterhost::vst {

EditorCallbacks::EditorCallbacks() = default;

EditorCallbacks::~EditorCallbacks() = default;

void EditorCallbacks::Add(VSTAudioFilterEditor* editor, EffectCallback callback) {
    List list = mLists.empty() ? List() : *mLists.back();
    if (list.emplace(editor, std::make_shared<EffectCallback const>(std::move(callback))).second)
        Use(std::move(list));
}

void EditorCallbacks::Remove(VSTAudioFilterEditor* editor) {
    List list = mLists.empty() ? List() : *mLists.back();
    if (list.erase(editor) != 0)
        Use(std::move(list));
}

void EditorCallbacks::Use(List list) {
    mLists.push_back(std::make_unique<List const>(std::move(list)));
    mList.store(mLists.back()->empty() ? nullptr : mLists.back().get(), std::memory_order_seq_cst);
    mGate.WaitForCalls();
    if (!mGate.IsInside())
        mLists.erase(mLists.begin(), mLists.end() - 1);
}

// One callback may have closed the editor of another.
bool EditorCallbacks::IsStillThere(List const& walked, VSTAudioFilterEditor* editor) const {
    List const* const list = mList.load(std::memory_order_seq_cst);
    return list == &walked || (list && list->count(editor) != 0);
}

std::intptr_t EditorCallbacks::Call(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                    float opt) {
    // As a rule there is none, which is seen without counting.
    if (!mList.load(std::memory_order_relaxed))
        return 0;
    CallGate::Pass const pass(mGate);
    List const* const list = mList.load(std::memory_order_seq_cst);
    if (!list)
        return 0;
    for (auto const& [editor, callback] : *list) {
        if (!IsStillThere(*list, editor))
            continue;
        if (std::intptr_t const answer = (*callback)(opcode, index, value, ptr, opt))
            return answer;
    }
    return 0;
}

} // namespace vynaudiofilterhost::vst
