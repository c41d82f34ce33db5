#include "vynaudiofilterhost/AudioFilterEditor.h"

namespace vynaudiofilterhost {

AudioFilterEditor::AudioFilterEditor() = default;
AudioFilterEditor::~AudioFilterEditor() = default;

void AudioFilterEditor::SetBrightness(float, bool) {}

bool AudioFilterEditor::GainFocus(bool) {
    return false;
}

bool AudioFilterEditor::SetCurrentFocus() {
    return false;
}

} // namespace vynaudiofilterhost
