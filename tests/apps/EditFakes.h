#pragma once

#include "apps/EditXClient.h"
#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"

#include <functional>

namespace vyntest {

/// An editor that puts a window of one colour into the one that it is given.
class FakeEditor : public vynaudiofilterhost::AudioFilterEditor {
public:
    vyncore::geom::RectT<int> GetEditorBounds() override { return bounds; }
    void OpenEditor(void* parentWindow) override {
        if (onOpen)
            onOpen();
        if (content.width > 0)
            child = client.MakeChild(EditXClient::FromHandle(parentWindow), content, 0x4080C0);
        SetOpen(opens);
    }
    void CloseEditor() override { SetOpen(false); }
    void EditorIdle() override {
        ++idleCalls;
        if (onIdle)
            onIdle();
    }
    bool IsEditorAvailable() override { return true; }

    void Ask(int width, int height) {
        bounds = {0, 0, width, height};
        GetContentSizeChangedSignal()();
    }

    EditXClient client;
    EditXClient::Window child = 0;
    vyncore::geom::RectT<int> bounds{0, 0, 320, 200};
    vynhost::WindowSize content{320, 200}; ///< 0 by 0: no window
    bool opens = true;
    int idleCalls = 0;
    std::function<void()> onOpen;
    std::function<void()> onIdle;
};

/// A filter that takes its editor back.
class FakeEditedFilter : public vynaudiofilterhost::AudioFilter {
public:
    FakeEditedFilter() : AudioFilter(u"fake", u"Fake") {}

    void DestroyCustomEditor(boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> given) override {
        returned = given == editor;
    }

    boost::intrusive_ptr<FakeEditor> editor{new FakeEditor};
    bool returned = false;
};

} // namespace vyntest
