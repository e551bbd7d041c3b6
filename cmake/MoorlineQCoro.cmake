# QCoro6::Core: the system's, or where none is installed one that is fetched and built with the program.
option(MOORLINE_FETCH_QCORO "Fetch QCoro where it is not installed" ${APPLE})

if(NOT MOORLINE_FETCH_QCORO)
    find_package(QCoro6 REQUIRED COMPONENTS Core)
    return()
endif()
find_package(QCoro6 QUIET COMPONENTS Core)
if(QCoro6_FOUND)
    return()
endif()

message(STATUS "QCoro is not installed: fetching it")
include(FetchContent)
FetchContent_Declare(qcoro SYSTEM
    URL https://github.com/qcoro/qcoro/archive/refs/tags/v0.12.0.tar.gz
    URL_HASH SHA256=809afafab61593f994c005ca6e242300e1e3e7f4db8b5d41f8c642aab9450fbc
    DOWNLOAD_EXTRACT_TIMESTAMP OFF
)
# Waiting is all that is needed of it.
set(USE_QT_VERSION 6)
set(QCORO_BUILD_EXAMPLES OFF)
set(QCORO_BUILD_TESTING OFF)
foreach(module QTDBUS QTNETWORK QTWEBSOCKETS QTQUICK QML QTTEST)
    set(QCORO_WITH_${module} OFF)
endforeach()
# What is set here counts before what is stored of its options.
set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
FetchContent_MakeAvailable(qcoro)
unset(CMAKE_POLICY_DEFAULT_CMP0077)
# Where it makes the headers that are named as its classes are.
target_include_directories(QCoro6Coro SYSTEM INTERFACE $<BUILD_INTERFACE:${qcoro_BINARY_DIR}/qcoro/QCoro>)
