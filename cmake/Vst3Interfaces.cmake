# The public VST3 interface headers. Only pluginterfaces/ is used, as a system include.
find_path(VYN_VST3_SDK pluginterfaces/base/funknown.h
  HINTS /usr/share/juce/modules/juce_audio_processors/format_types/VST3_SDK
  DOC "Folder that holds the VST3 interface headers (pluginterfaces/)")
if(NOT VYN_VST3_SDK)
  message(FATAL_ERROR
    "The VST3 interface headers are missing: install Debian's package juce-modules-source-data, "
    "or set VYN_VST3_SDK to a folder that holds pluginterfaces/.")
endif()

# FUnknown's interface identifiers and the FUID helpers; third-party code, so our warnings stay away from it.
add_library(vyn_vst3_interfaces OBJECT
  ${VYN_VST3_SDK}/pluginterfaces/base/coreiids.cpp
  ${VYN_VST3_SDK}/pluginterfaces/base/funknown.cpp)
target_include_directories(vyn_vst3_interfaces SYSTEM PUBLIC ${VYN_VST3_SDK})
target_compile_definitions(vyn_vst3_interfaces PUBLIC
  $<$<CONFIG:Debug>:DEVELOPMENT=1> $<$<NOT:$<CONFIG:Debug>>:RELEASE=1>)
target_compile_options(vyn_vst3_interfaces PRIVATE -w)
