#pragma once

#include "FilterFixture.h"

#include "vynaudiofilterhost/VST3/src/VST3AudioFilterEditor.h"

#include <string>
#include <vector>

namespace vyntest {

/// A faultless plug-in with a view, and with the vendor's interfaces.
inline vynfixtures::FixtureConfiguration PluginWithView() {
    vynfixtures::FixtureConfiguration configuration;
    configuration.vendorInterfaces = true;
    configuration.view.present = true;
    return configuration;
}

/// A plug-in with this view, and without the vendor's interfaces.
inline vynfixtures::FixtureConfiguration PluginWithView(vynfixtures::FixtureViewConfiguration const& view) {
    vynfixtures::FixtureConfiguration configuration;
    configuration.view = view;
    configuration.view.present = true;
    return configuration;
}

/// A test over the editor of a fixture's filter.
class VST3EditorFixture : public FilterTest {
protected:
    using Bounds = vyncore::geom::RectT<int>;
    using Texts = std::vector<std::string>;

    ~VST3EditorFixture() override { editor.reset(); }

    /// A filter of that plug-in and its editor, closed. Clears the log.
    void Make(vynfixtures::FixtureConfiguration const& configuration) {
        editor.reset();
        filter.reset();
        Open(configuration);
        ASSERT_TRUE(filter);
        editor = filter->CreateCustomEditor();
        ASSERT_TRUE(editor);
        fixture->ClearCalls();
    }

    void MakeOpen(vynfixtures::FixtureConfiguration const& configuration) {
        Make(configuration);
        editor->OpenEditor(&window);
        fixture->ClearCalls();
    }

    /// The calls since the last time; clears the log.
    Texts TakeTexts() {
        Texts texts = fixture->CallTexts();
        fixture->ClearCalls();
        return texts;
    }

    vynaudiofilterhost::vst3::VST3AudioFilterEditor& Frame() {
        return dynamic_cast<vynaudiofilterhost::vst3::VST3AudioFilterEditor&>(*editor);
    }

    /// What a view other than the editor's own asks of its frame.
    Steinberg::tresult Resize(Steinberg::ViewRect rect) { return Frame().resizeView(nullptr, &rect); }

    int window = 0; ///< its address stands for a window
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> editor;
};

} // namespace vyntest
