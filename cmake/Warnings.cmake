# The one place that decides which warnings this project's own code is held to.
add_library(burnwick_warnings INTERFACE)
target_compile_options(burnwick_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
    $<$<NOT:$<COMPILE_LANGUAGE:OBJCXX>>:-Wold-style-cast> # the frameworks need them
    $<$<BOOL:${BURNWICK_WERROR}>:-Werror>)
target_compile_definitions(burnwick_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(BURNWICK_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented, the standard library's own optional and function look uninitialised to GCC 12.
    target_compile_options(burnwick_warnings INTERFACE -Wno-maybe-uninitialized)
endif()
