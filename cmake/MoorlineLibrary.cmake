# moorline_library(<folder> SOURCES <file>... [LINKS <target>...])
#
# One folder of src/ as a static library of the same name. LINKS names the folders above it in the order of dependence;
# a folder that is not named is not linked, so an include that runs the wrong way fails to build.
function(moorline_library folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(moorline_${folder} STATIC ${arg_SOURCES})
    add_library(moorline::${folder} ALIAS moorline_${folder})
    target_include_directories(moorline_${folder} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(moorline_${folder} PUBLIC ${arg_LINKS} PRIVATE moorline_options)
    moorline_use_precompiled(moorline_${folder} src)
endfunction()
