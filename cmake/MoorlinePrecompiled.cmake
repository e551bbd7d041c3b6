# Precompiled headers: two, each built once and read by all who are compiled alike.
#
#   moorline_precompiled_src      what src/ includes over and over
#   moorline_precompiled_tests    the same, and Qt Test
#
# A header of ours is in neither, so that a change to one never rebuilds everything. Nothing may rely on them: the build
# beside clang-tidy goes without, and fails where a file does not include what it uses.

set(moorline_src_headers
    <algorithm> <array> <chrono> <cmath> <coroutine> <functional> <limits> <memory> <optional> <utility> <variant> <vector>
    <QByteArray> <QColor> <QCoreApplication> <QCoroTask> <QDateTime> <QDir> <QFile> <QGraphicsWidget> <QGuiApplication>
    <QImage> <QJsonArray> <QJsonDocument> <QJsonObject> <QList> <QLocale> <QLoggingCategory> <QMenu> <QObject> <QPainter>
    <QPainterPath> <QPointer> <QProcess> <QRectF> <QScreen> <QSet> <QString> <QStringList> <QThread> <QTimeZone> <QUrl>
    <QVariant> <QWidget> <QtMath>
)
set(moorline_test_headers
    <QApplication> <QGraphicsScene> <QGraphicsView> <QRegularExpression> <QSignalSpy> <QTemporaryDir> <QTest>
)

# The compiler compares the macros which these headers ask about: all users have to be compiled with the same of those.
function(moorline_add_precompiled name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LINKS")
    set(source ${PROJECT_BINARY_DIR}/precompiled/${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "// A target needs a file to precompile headers for.\n")
    add_library(moorline_precompiled_${name} OBJECT ${source})
    set_target_properties(moorline_precompiled_${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(moorline_precompiled_${name} PRIVATE ${arg_LINKS} moorline_options)
    target_precompile_headers(moorline_precompiled_${name} PRIVATE ${arg_HEADERS})
endfunction()

if(MOORLINE_PCH)
    # The lowest folders know Qt Core alone, so its macro is the only one; which folder may link what is seen elsewhere.
    moorline_add_precompiled(src HEADERS ${moorline_src_headers} LINKS Qt6::Core QCoro6::Core)
    target_include_directories(moorline_precompiled_src SYSTEM PRIVATE
        $<TARGET_PROPERTY:Qt6::Gui,INTERFACE_INCLUDE_DIRECTORIES>
        $<TARGET_PROPERTY:Qt6::Widgets,INTERFACE_INCLUDE_DIRECTORIES>
    )
    if(BUILD_TESTING)
        moorline_add_precompiled(tests HEADERS ${moorline_src_headers} ${moorline_test_headers}
            LINKS moorline_qt_test Qt6::Widgets QCoro6::Core
        )
    endif()
endif()

# moorline_use_precompiled(<target> <src|tests>)
function(moorline_use_precompiled target name)
    if(NOT MOORLINE_PCH)
        return()
    endif()
    target_precompile_headers(${target} REUSE_FROM moorline_precompiled_${name})
    # These headers are compiled as C++.
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.mm$")
    if(sources)
        set_source_files_properties(${sources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    endif()
endfunction()
