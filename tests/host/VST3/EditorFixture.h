#pragma once

#include "FilterFixture.h"

#include "vynaudiofilterhost/VST3/src/VST3AudioFilterEditor.h"

namespace vyntest {

/// A faultless plug-in with a view, and with the vendor's interfaces.
inline FixtureConfiguration PluginWithView() {
    FixtureConfiguration configuration;
    configuration.vendorInterfaces = true;
    configuration.view.present = true;
    return configuration;
}

/// A plug-in with this view, and without the vendor's interfaces.
inline FixtureConfiguration PluginWithView(FixtureViewConfiguration const& view) {
    FixtureConfiguration configuration;
    configuration.view = view;
    configuration.view.present = true;
    return configuration;
}

/// A test over the editor of a fixture's filter.
class VST3EditorFixture : public FilterTest {
protected:
    using Bounds = vyncore::geom::RectT<int>;

    ~VST3EditorFixture() override { editor.reset(); }

    /// A filter of that plug-in and its editor, closed. Clears the log.
    void Make(FixtureConfiguration const& configuration) {
        editor.reset();
        filter.reset();
        Open(configuration);
        ASSERT_TRUE(filter);
        editor = filter->CreateCustomEditor();
        ASSERT_TRUE(editor);
        fixture->ClearCalls();
    }

    void MakeOpen(FixtureConfiguration const& configuration) {
        Make(configuration);
        editor->OpenEditor(&window);
        fixture->ClearCalls();
    }

    VST3AudioFilterEditor& Frame() { return dynamic_cast<VST3AudioFilterEditor&>(*editor); }

    /// What a view other than the editor's own asks of its frame.
    Steinberg::tresult Resize(Steinberg::ViewRect rect) { return Frame().resizeView(nullptr, &rect); }

    int window = 0; ///< its address stands for a window
    boost::intrusive_ptr<AudioFilterEditor> editor;
};

} // namespace vyntest
