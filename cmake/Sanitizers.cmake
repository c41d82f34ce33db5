# VYN_SANITIZE names the sanitizers of a whole build tree, so that no object of it is left out.
if(VYN_SANITIZE)
  add_compile_options(-fsanitize=${VYN_SANITIZE} -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=${VYN_SANITIZE})
  if(VYN_SANITIZE MATCHES "thread")
    add_library(vyn_sanitizer_options OBJECT ${PROJECT_SOURCE_DIR}/cmake/ThreadSanitizerSuppressions.cpp)
  endif()
  if(VYN_SANITIZE MATCHES "undefined")
    # Modules that are loaded at run time bring type information of their own, which the vptr check takes for a fault.
    add_compile_options(-fno-sanitize-recover=undefined -fno-sanitize=vptr)
  endif()
endif()

# vyn_set_sanitizer_options(program): what the sanitizers are to know when the program runs.
function(vyn_set_sanitizer_options program)
  if(TARGET vyn_sanitizer_options)
    target_sources(${program} PRIVATE $<TARGET_OBJECTS:vyn_sanitizer_options>)
  endif()
endfunction()
