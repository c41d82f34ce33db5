#pragma once

#include "vynaudiofilterhost/VST3/src/IVirtualAudioFilterSupport.h"
#include "vyncore/Export.h"

#include "pluginterfaces/base/funknown.h"

namespace vynaudiofilterhost::vst3 {

/// What this host answers beyond the published interfaces. A plug-in gets it through queryInterface on any interface of
/// the host and uses it until it is terminated; its references are counted for form only.
class IVST3TolveVendorSpecificHost : public Steinberg::FUnknown {
public:
    /// The number of the user's language, 0 for English and all that have none; see LanguageCodeForLocale.
    /// [any-thread]
    virtual int PLUGIN_API GetLanguageCode() = 0;

    /// Reserved: gives 0.
    /// [any-thread]
    virtual int PLUGIN_API ReservedQuery() = 0;

    /// Reserved: does nothing.
    /// [any-thread]
    virtual void PLUGIN_API ReservedCommand() = 0;

    /// Gives the keyboard focus back to the host's window: 1 to what follows the editor, any other number to what
    /// precedes it. Nothing without an open editor.
    /// [main-thread]
    virtual void PLUGIN_API OnAdvanceFocus(int direction) = 0;

    /// The application's locale, such as "en_US"; the text stays the host's.
    /// [any-thread]
    virtual char const* PLUGIN_API GetLocale() = 0;

    static Steinberg::FUID const iid;
};

/// What a plug-in's component may answer: a display name of its own, instead of its class's.
class IVST3TolveVendorSpecificComponent : public Steinberg::FUnknown {
public:
    /// The length of the name in bytes, without terminator; 0 for none.
    /// [main-thread]
    virtual Steinberg::uint32 PLUGIN_API GetDisplayNameLength() = 0;

    /// Writes the name in UTF-8, with its terminator, into a buffer of that length and one byte more.
    /// [main-thread]
    virtual void PLUGIN_API GetDisplayName(char* buffer) = 0;

    static Steinberg::FUID const iid;
};

/// What a plug-in's edit controller may answer: following the host's interface in brightness and keyboard focus.
class IVST3TolveVendorSpecificController : public Steinberg::FUnknown {
public:
    /// The brightness of the host's interface; what value and flag mean is between application and plug-in.
    /// [main-thread]
    virtual void PLUGIN_API SetBrightness(float value, bool flag) = 0;

    /// The flag alone, sent right after SetBrightness.
    /// [main-thread]
    virtual void PLUGIN_API SetBrightnessFlag(bool flag) = 0;

    /// Offers the keyboard focus; not 0 when the editor took it.
    /// [main-thread]
    virtual Steinberg::int32 PLUGIN_API GainFocus(bool flag) = 0;

    /// Asks the editor to take the focus to its current control; not 0 when it did.
    /// [main-thread]
    virtual Steinberg::int32 PLUGIN_API SetCurrentFocus() = 0;

    static Steinberg::FUID const iid;
};

/// What a plug-in's audio processor may answer: the questions of IVirtualAudioFilterSupport. Exported, so that a
/// plug-in can be built against it. The filter holds a reference from its construction to its destruction.
class VYN_API IVST3VirtualAudioFilterProcessor : public Steinberg::FUnknown, public IVirtualAudioFilterSupport {
public:
    IVST3VirtualAudioFilterProcessor();
    IVST3VirtualAudioFilterProcessor(IVST3VirtualAudioFilterProcessor const&);
    IVST3VirtualAudioFilterProcessor(IVST3VirtualAudioFilterProcessor&&) noexcept;
    IVST3VirtualAudioFilterProcessor& operator=(IVST3VirtualAudioFilterProcessor const&);
    IVST3VirtualAudioFilterProcessor& operator=(IVST3VirtualAudioFilterProcessor&&) noexcept;

    static Steinberg::FUID const iid;
};

DECLARE_CLASS_IID(IVST3TolveVendorSpecificHost, 0x7FCBCFCE, 0x2862476A, 0xBFF2219B, 0xCA70789D)
DECLARE_CLASS_IID(IVST3TolveVendorSpecificComponent, 0x872EE790, 0x61B243A2, 0x8DBA33C1, 0xD9262D3E)
DECLARE_CLASS_IID(IVST3TolveVendorSpecificController, 0x3C8A2F25, 0x14114BF7, 0x851B13CB, 0x9C55AC92)
DECLARE_CLASS_IID(IVST3VirtualAudioFilterProcessor, 0xF83AD871, 0x25F94500, 0x903A25AA, 0x46A3848C)

} // namespace vynaudiofilterhost::vst3
