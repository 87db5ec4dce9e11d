# How every file is compiled, in every preset.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# Results are a contract to the last bit. A product and a sum contracted to one instruction round once instead of
# twice, so the compiler may not do it, whatever processor it builds for.
add_compile_options(-ffp-contract=off)

# Functions begin where lines of the processor's cache do. Where else they come to lie differs from program to program,
# and has made the same engine a fifth slower in one than in another.
add_compile_options($<$<CONFIG:Release>:-falign-functions=64>)

find_program(ccacheProgram ccache)
mark_as_advanced(ccacheProgram)
if(ccacheProgram AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ccacheProgram})
endif()

# The warning flags of our own code; layers, programs and tests link this target.
add_library(timbersim_warnings INTERFACE)
target_compile_options(timbersim_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Two false alarms of GCC 12 in the standard library's own strings: where a literal is joined with a string
    # (GCC bug 105651), and, at -O2 alone, where the bytes kept inside a string are searched. Preset dev keeps the second.
    target_compile_options(timbersim_warnings INTERFACE
        -Wno-restrict
        $<$<CONFIG:Release>:-Wno-maybe-uninitialized>)
endif()
