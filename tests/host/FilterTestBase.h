#pragma once

#include "host/HostTest.h"
#include "support/SampleBlock.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/Library.h"

#include <cstdint>
#include <memory>

namespace vyntest {

/// A test over a filter of a fixture module, with the library started.
template <class Fixture, class Filter>
class FilterTestBase : public testing::Test {
protected:
    FilterTestBase() { Initialize(true); }

    /// Suspends the filter and lets go of it.
    void EndFilter() {
        if (filter && !filter->IsSuspended())
            filter->Suspend();
        filter.reset();
    }

    /// Resumes the filter; clears the log.
    void Resume(int blockSize = 4096) {
        filter->SetBlockSize(blockSize);
        filter->Resume();
        fixture->ClearCalls();
    }

    ChannelFlags Render(SampleBlock& in, SampleBlock& out, int samples, std::uint64_t silent = 0) {
        ChannelFlags outFlags(~std::uint64_t{0});
        filter->ProcessWithMapping(in.Get(), out.Get(), samples, ChannelFlags(silent), outFlags);
        return outFlags;
    }

    /// The calls since the last time, as text; clears the log.
    Texts TakeTexts() {
        Texts texts = CallTexts();
        fixture->ClearCalls();
        return texts;
    }

    /// An editor whose filter has gone does nothing, whatever is asked of it.
    void ExpectNothingOf(AudioFilterEditor& editor) {
        fixture->ClearCalls();
        EXPECT_FALSE(editor.IsOpen());
        editor.OpenEditor(this);
        EXPECT_FALSE(editor.IsOpen());
        EXPECT_EQ(editor.GetEditorBounds(), vyncore::geom::RectT<int>());
        editor.EditorIdle();
        editor.SetBrightness(1.0f, true);
        EXPECT_FALSE(editor.GainFocus(true));
        EXPECT_FALSE(editor.SetCurrentFocus());
        editor.CloseEditor();
        EXPECT_THAT(TakeTexts(), IsEmpty());
    }

    /// The calls of the log, as text.
    virtual Texts CallTexts() const = 0;

    std::unique_ptr<Fixture> fixture;
    boost::intrusive_ptr<Filter> filter;
};

} // namespace vyntest
