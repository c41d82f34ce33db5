# The script engine, from the sources that Debian's package brings along: the compiled library of the package can't end a
# script that never comes to its end. Built as C++, so that errors on their way out of a script unwind what lies between.
find_path(VYN_DUKTAPE duktape.c
  HINTS /usr/share/duktape
  DOC "Folder that holds Duktape's sources (duktape.c, duktape.h, duk_config.h)")
if(NOT VYN_DUKTAPE)
  message(FATAL_ERROR
    "The script engine's sources are missing: install Debian's package duktape-dev, "
    "or set VYN_DUKTAPE to a folder that holds duktape.c.")
endif()

# duktape.h includes the configuration that lies beside it, hence a folder with ours.
set(duktape_folder ${CMAKE_BINARY_DIR}/duktape)
foreach(file duktape.c duktape.h)
  configure_file(${VYN_DUKTAPE}/${file} ${duktape_folder}/${file} COPYONLY)
endforeach()
file(CONFIGURE OUTPUT ${duktape_folder}/duk_config.h @ONLY CONTENT [[
#include <exception>
#include <stdexcept>
#include "@VYN_DUKTAPE@/duk_config.h"

/* Nothing of it is exported from the library that it becomes a part of. */
#undef DUK_EXTERNAL_DECL
#undef DUK_EXTERNAL
#define DUK_EXTERNAL_DECL extern
#define DUK_EXTERNAL

#define DUK_USE_CPP_EXCEPTIONS
#define DUK_USE_INTERRUPT_COUNTER
#define DUK_USE_EXEC_TIMEOUT_CHECK(udata) VynScriptTimeIsUp(udata)
#define DUK_USE_NATIVE_STACK_CHECK() VynScriptStackIsUsedUp()
extern "C" duk_bool_t VynScriptTimeIsUp(void* heap);
extern "C" int VynScriptStackIsUsedUp();

/* Each frame is unwound by itself when a script's time is up. */
#undef DUK_USE_CALLSTACK_LIMIT
#define DUK_USE_CALLSTACK_LIMIT 5000

/* The native stack's own limit ends recursions of built-in functions. */
#undef DUK_USE_NATIVE_CALL_RECLIMIT
#define DUK_USE_NATIVE_CALL_RECLIMIT 2000
]])

set_source_files_properties(${duktape_folder}/duktape.c PROPERTIES LANGUAGE CXX)
add_library(vyn_duktape OBJECT ${duktape_folder}/duktape.c)
target_include_directories(vyn_duktape SYSTEM PUBLIC ${duktape_folder})
# Third-party code: our warnings, and what the sanitizer says of its arithmetic, stay away from it.
target_compile_options(vyn_duktape PRIVATE -w)
if(VYN_SANITIZE MATCHES "undefined")
  target_compile_options(vyn_duktape PRIVATE -fno-sanitize=undefined)
endif()
