#include "vynaudiofilterhost/VST3/src/VST3VendorExtension.h"

namespace vynaudiofilterhost::vst3 {

DEF_CLASS_IID(IVST3TolveVendorSpecificHost)
DEF_CLASS_IID(IVST3TolveVendorSpecificComponent)
DEF_CLASS_IID(IVST3TolveVendorSpecificController)
DEF_CLASS_IID(IVST3VirtualAudioFilterProcessor)

// Out of line, so that the library exports them and both tables of operations.
IVST3VirtualAudioFilterProcessor::IVST3VirtualAudioFilterProcessor() = default;
IVST3VirtualAudioFilterProcessor::IVST3VirtualAudioFilterProcessor(IVST3VirtualAudioFilterProcessor const&) = default;
IVST3VirtualAudioFilterProcessor::IVST3VirtualAudioFilterProcessor(IVST3VirtualAudioFilterProcessor&&) noexcept =
    default;
IVST3VirtualAudioFilterProcessor&
IVST3VirtualAudioFilterProcessor::operator=(IVST3VirtualAudioFilterProcessor const&) = default;
IVST3VirtualAudioFilterProcessor&
IVST3VirtualAudioFilterProcessor::operator=(IVST3VirtualAudioFilterProcessor&&) noexcept = default;

} // namespace vynaudiofilterhost::vst3
