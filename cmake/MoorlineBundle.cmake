# moorline_bundle(<target>)
#
# Makes the program of a target the application "Moorline.app" on macOS. It is signed for the machine it was built on: what
# the user grants is granted to a signature, and the one that the linker makes says nothing of the bundle.
function(moorline_bundle target)
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME Moorline
        MACOSX_BUNDLE ON
        MACOSX_BUNDLE_INFO_PLIST ${PROJECT_SOURCE_DIR}/packaging/Info.plist.in
    )
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND codesign --force --sign - $<TARGET_BUNDLE_DIR:${target}>
        VERBATIM
    )
endfunction()
