# What every target of ours is compiled with, and the kinds of targets there are. Links point down only, see ARCHITECTURE.md.
add_library(velto-options INTERFACE)
target_compile_features(velto-options INTERFACE cxx_std_20)
target_compile_options(velto-options INTERFACE
    -Wall -Wextra -Wshadow $<$<NOT:$<BOOL:$<TARGET_PROPERTY:VELTO_MAY_NARROW>>>:-Wconversion> -Wno-sign-conversion
    -Wnon-virtual-dtor -Woverloaded-virtual)
if(VELTO_WERROR)
    target_compile_options(velto-options INTERFACE -Werror)
endif()
target_compile_definitions(velto-options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING
    QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400 QT_WARN_DEPRECATED_UP_TO=0x060400)
if(VELTO_SANITIZE)
    target_compile_options(velto-options INTERFACE -fsanitize=${VELTO_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(velto-options INTERFACE -fsanitize=${VELTO_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # Clang 14 can't compile this check for a coroutine that is a free function.
        target_compile_options(velto-options INTERFACE -fno-sanitize=function)
    endif()
endif()

# A release is made small: that takes a third off the program and 1.6 MB off its memory, and it starts and draws as fast. What
# works through megabytes is made fast instead, see velto_fast.
target_compile_options(velto-options INTERFACE $<$<CONFIG:Release>:-Os>)

# A fast linker, if there is one, for the many programs of a debug build. A release is linked with the compiler's default, with its
# 9,000 relocations packed if the linker can do that: 200 kB less memory.
include(CheckLinkerFlag)
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    foreach(linker mold lld)
        find_program(VELTO_${linker} NAMES ${linker} ld.${linker} NO_CACHE)
        if(VELTO_${linker})
            check_linker_flag(CXX -fuse-ld=${linker} VELTO_LINKS_WITH_${linker})
            if(VELTO_LINKS_WITH_${linker})
                target_link_options(velto-options INTERFACE -fuse-ld=${linker})
                break()
            endif()
        endif()
    endforeach()
else()
    check_linker_flag(CXX -Wl,-z,pack-relative-relocs VELTO_PACKS_RELOCATIONS)
    if(VELTO_PACKS_RELOCATIONS)
        target_link_options(velto-options INTERFACE -Wl,-z,pack-relative-relocs)
    endif()
endif()

# velto_precompiled_headers(NAME LIBRARIES ... OPTIONS ... HEADERS ...): headers of Qt and of the language that many sources read,
# precompiled once for all targets that link these libraries. Our own headers don't belong here: each change to one would
# rebuild everything. With GCC only, so that the Clang builds (fuzz, lint) still notice a source that relies on another's includes.
function(velto_precompiled_headers name)
    cmake_parse_arguments(arg "" "" "LIBRARIES;OPTIONS;HEADERS" ${ARGN})
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        return()
    endif()
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled.cpp CONTENT "")
    add_library(${name} STATIC ${CMAKE_BINARY_DIR}/precompiled.cpp)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE velto-options ${arg_LIBRARIES})
    target_compile_options(${name} PRIVATE ${arg_OPTIONS})
    target_precompile_headers(${name} PRIVATE
        <QByteArray> <QCoreApplication> <QDateTime> <QFile> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject> <QList> <QObject>
        <QPointer> <QRegularExpression> <QSet> <QString> <QStringList> <QTimer> <QUrl> <QUuid> <QVariant>
        <chrono> <deque> <functional> <map> <memory> <optional> <variant> <vector> ${arg_HEADERS})
endfunction()
velto_precompiled_headers(velto-precompiled LIBRARIES Qt6::Core)
velto_precompiled_headers(velto-precompiled-quick LIBRARIES Qt6::Quick OPTIONS -DQT_STATICPLUGIN
    HEADERS <QGuiApplication> <QPainter> <QQmlContext> <QQmlEngine> <QQuickItem> <QQuickPaintedItem> <QQuickWindow>
        <QtQml/qqmlextensionplugin.h> <QtQml/qqmlprivate.h>)

# velto_precompiled(NAME [OWNER]): lets a target use those of OWNER, velto-precompiled by default.
function(velto_precompiled name)
    set(owner velto-precompiled ${ARGN})
    list(GET owner -1 owner)
    if(TARGET ${owner} AND TARGET ${name})
        target_precompile_headers(${name} REUSE_FROM ${owner})
    endif()
endfunction()

# velto_nothing_to_moc(NAME): the source that CMake adds for moc's output will be empty, so it needs no precompiled headers.
function(velto_nothing_to_moc name)
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# velto_headers(NAME FILES...): lets NAME, and whatever links it, include the headers among its files, by their path below src/.
# A target sees the headers of what it links and no others, so that an include that points up doesn't compile. For that, each
# library has a folder of links to its own headers.
function(velto_headers name)
    set(root ${CMAKE_BINARY_DIR}/include/${name})
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src OUTPUT_VARIABLE folder)
    file(REMOVE_RECURSE ${root})
    file(MAKE_DIRECTORY ${root}/${folder})
    set(headers ${ARGN})
    list(FILTER headers INCLUDE REGEX "\\.h$")
    foreach(header ${headers})
        cmake_path(GET header PARENT_PATH below)
        file(MAKE_DIRECTORY ${root}/${folder}/${below})
        file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${root}/${folder}/${header} SYMBOLIC)
    endforeach()
    target_include_directories(${name} PUBLIC ${root})
endfunction()

# velto_library(NAME FILES...): a static library of ours.
function(velto_library name)
    add_library(${name} STATIC ${ARGN})
    set(sources ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC velto-options)
    cmake_path(IS_PREFIX sources ${CMAKE_CURRENT_SOURCE_DIR} ours)
    if(ours)
        velto_headers(${name} ${ARGN})
    endif()
    velto_precompiled(${name})
endfunction()

# velto_fast(FILES...): sources of this folder whose loops are worth the space. They can't share headers that were precompiled for
# small code.
function(velto_fast)
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O3 SKIP_PRECOMPILE_HEADERS ON)
    endif()
endfunction()

# velto_qml_module(NAME URI QML_FILES ... SOURCES ...): one folder, one library, one QML module.
# Only release builds compile QML ahead of time; debug builds skip it to build faster.
function(velto_qml_module name uri)
    string(REPLACE "." "/" path ${uri})
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        set(cachegen)
    else()
        set(cachegen NO_CACHEGEN)
    endif()
    qt_add_library(${name} STATIC)
    qt_add_qml_module(${name} URI ${uri} VERSION 1.0 RESOURCE_PREFIX /qt/qml OUTPUT_TARGETS made
        OUTPUT_DIRECTORY ${QT_QML_OUTPUT_DIRECTORY}/${path} ${cachegen} ${ARGN})
    target_link_libraries(${name} PUBLIC velto-options Qt6::Quick)
    cmake_parse_arguments(module "" "" "SOURCES;QML_FILES;DEPENDENCIES" ${ARGN})
    velto_headers(${name} ${module_SOURCES})
    # The generated registration includes them by their bare names.
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    # The C++ that Qt generates for each view is mostly includes: a dozen are compiled as one. It doesn't pass our warnings.
    get_target_property(sources ${name} SOURCES)
    list(FILTER sources INCLUDE REGEX "/qmlcache/")
    set(count 0)
    foreach(source ${sources})
        math(EXPR group "${count} / 12")
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP views${group})
        math(EXPR count "${count} + 1")
    endforeach()
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP UNITY_BUILD_CODE_BEFORE_INCLUDE
        "#pragma GCC diagnostic ignored \"-Wconversion\"\n#pragma GCC diagnostic ignored \"-Wshadow\"")
    # The plugin, and what links it into a program, share the precompiled headers: so all of them get a plugin's flags. Neither they nor
    # the resources hold anything for moc.
    foreach(each ${name} ${name}plugin ${name}plugin_init)
        if(TARGET ${each})
            target_compile_definitions(${each} PRIVATE QT_STATICPLUGIN)
            velto_precompiled(${each} velto-precompiled-quick)
        endif()
    endforeach()
    set_target_properties(${made} PROPERTIES AUTOMOC OFF)
    velto_nothing_to_moc(${name}plugin)
endfunction()
