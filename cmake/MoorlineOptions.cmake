# What every target of this project is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(MOORLINE_WERROR "Let a warning stop the build" OFF)
option(MOORLINE_SANITIZE "Compile with the address and undefined behaviour sanitizers" OFF)
option(MOORLINE_TIDY "Run clang-tidy beside the compiler" OFF)

find_program(CCACHE ccache)
if(CCACHE)
    # What the cache has to be told before it takes precompiled headers: that a macro defined beside them is looked at by the
    # compiler, not by it, and that nothing here depends on the time of day or on how new a header is.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE}
    )
endif()

add_library(moorline_options INTERFACE)
target_compile_options(moorline_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    # As GLib wants its users compiled: a precompiled header remembers it, so everyone is.
    $<$<NOT:$<PLATFORM_ID:Darwin>>:-pthread>
    $<$<BOOL:${MOORLINE_WERROR}>:-Werror>
    $<$<BOOL:${MOORLINE_PCH}>:$<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>>
)
target_compile_definitions(moorline_options INTERFACE
    QT_NO_KEYWORDS
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_FOREACH
    QT_STRICT_ITERATORS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
)
if(MOORLINE_SANITIZE)
    target_compile_options(moorline_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
        # Qt compares empty lists with memcmp on two null pointers and no length.
        -fno-sanitize=nonnull-attribute
    )
    target_link_options(moorline_options INTERFACE -fsanitize=address,undefined)
endif()
if(MOORLINE_TIDY)
    find_program(CLANG_TIDY clang-tidy REQUIRED)
    set(CMAKE_CXX_CLANG_TIDY ${CLANG_TIDY})
endif()
