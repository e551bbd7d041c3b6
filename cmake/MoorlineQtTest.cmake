# Qt Test without the two folders that its own target tells every program: they would make each program's compiler calls its
# own, and neither precompiled headers nor a compiler cache could be shared. QFINDTESTDATA is what is lost.
add_library(moorline_qt_test INTERFACE)
target_include_directories(moorline_qt_test SYSTEM INTERFACE $<TARGET_PROPERTY:Qt6::Test,INTERFACE_INCLUDE_DIRECTORIES>)
target_compile_definitions(moorline_qt_test INTERFACE QT_TESTLIB_LIB)
target_link_libraries(moorline_qt_test INTERFACE Qt6::Core $<LINK_ONLY:Qt6::Test>)
