# JUCE's modules, compiled into two static libraries that differ only where they must:
# - vantrice_juce, for what ships (the plug-ins, the renderer, the benchmarks): no plug-in hosting and no
#   modal loops, JUCE's own defaults;
# - vantrice_juce_host, for the validator, the tests and the fuzz targets: JUCE's hosting of the 2.4
#   interface, VST3 and LV2, and the message loop a test pumps (modal loops permitted).
# The two settings change the compiled code of four modules only; the other modules are compiled once and
# their objects go into both libraries. They add functions and classes but change the layout of no class
# that our code or the other modules use, so our library, compiled once without them, links with either.
# Every program links exactly one of the two: our library links the one its program asks for.

set(VANTRICE_JUCE_SHARED_MODULES
    juce_core juce_data_structures juce_audio_basics juce_audio_formats juce_audio_devices juce_audio_utils
    juce_graphics)
set(VANTRICE_JUCE_VARIANT_MODULES juce_events juce_gui_basics juce_gui_extra juce_audio_processors)

# What compiling against JUCE needs, for JUCE's modules and for our code alike.
add_library(vantrice_juce_config INTERFACE)
target_compile_definitions(vantrice_juce_config INTERFACE
    JUCE_GLOBAL_MODULE_SETTINGS_INCLUDED=1
    JUCE_DISPLAY_SPLASH_SCREEN=0
    JUCE_REPORT_APP_USAGE=0
    JUCE_WEB_BROWSER=0
    JUCE_USE_CURL=0
    JUCE_USE_FLAC=1
    JUCE_USE_OGGVORBIS=1
    JUCE_SILENCE_XCODE_15_LINKER_WARNING=1
    JUCE_JACK_CLIENT_NAME="Vantrice")
target_link_libraries(vantrice_juce_config INTERFACE juce::juce_recommended_config_flags)

# The modules' sources are taken one by one: linking a module's target would bring the sources of every
# module it depends on into the same library. Their definitions, include paths and system libraries go
# to the configuration; the header-only targets of the plug-in SDKs stay with the code that needs them.
set(VANTRICE_JUCE_SHARED_SOURCES)
set(VANTRICE_JUCE_VARIANT_SOURCES)
foreach(module IN LISTS VANTRICE_JUCE_SHARED_MODULES VANTRICE_JUCE_VARIANT_MODULES)
    get_target_property(sources juce::${module} INTERFACE_SOURCES)
    if(module IN_LIST VANTRICE_JUCE_SHARED_MODULES)
        list(APPEND VANTRICE_JUCE_SHARED_SOURCES ${sources})
    else()
        list(APPEND VANTRICE_JUCE_VARIANT_SOURCES ${sources})
    endif()
    target_compile_definitions(vantrice_juce_config INTERFACE
        $<TARGET_PROPERTY:juce::${module},INTERFACE_COMPILE_DEFINITIONS>)
    target_include_directories(vantrice_juce_config INTERFACE
        $<TARGET_PROPERTY:juce::${module},INTERFACE_INCLUDE_DIRECTORIES>)
    get_target_property(links juce::${module} INTERFACE_LINK_LIBRARIES)
    foreach(item IN LISTS links)
        string(REGEX REPLACE "^juce::" "" bare "${item}")
        if(NOT bare IN_LIST VANTRICE_JUCE_SHARED_MODULES AND NOT bare IN_LIST VANTRICE_JUCE_VARIANT_MODULES
           AND NOT bare MATCHES "_headers$")
            target_link_libraries(vantrice_juce_config INTERFACE ${item})
        endif()
    endforeach()
endforeach()

# Debian builds JUCE's image and audio codecs against the system's libraries instead of the copies JUCE
# carries, so they are linked from here.
find_package(PkgConfig REQUIRED)
pkg_check_modules(VANTRICE_JUCE_CODECS REQUIRED IMPORTED_TARGET libpng libjpeg flac vorbis vorbisenc vorbisfile ogg)
target_link_libraries(vantrice_juce_config INTERFACE PkgConfig::VANTRICE_JUCE_CODECS)

# How JUCE's own code is compiled, in every part.
function(vantrice_juce_compile_options target)
    # JUCE's own code is not ours to keep warning-free.
    target_compile_options(${target} PRIVATE -w)
    # The LV2 host libraries inside JUCE call their C callbacks through pointers of a slightly different
    # type, which clang's UBSan reports in every host run; it is not ours to change.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND VANTRICE_SANITIZE MATCHES "undefined")
        target_compile_options(${target} PRIVATE -fno-sanitize=function)
    endif()
endfunction()

add_library(vantrice_juce_shared OBJECT ${VANTRICE_JUCE_SHARED_SOURCES})
target_link_libraries(vantrice_juce_shared PUBLIC vantrice_juce_config PRIVATE juce::juce_vst3_headers
    juce::juce_lilv_headers juce::juce_ara_headers)
vantrice_juce_compile_options(vantrice_juce_shared)

# The settings that make the host variant; the shipped one keeps JUCE's defaults (all off).
set(VANTRICE_JUCE_HOST_DEFINITIONS
    JUCE_PLUGINHOST_VST3=1
    JUCE_PLUGINHOST_LV2=1
    JUCE_PLUGINHOST_VST=1
    JUCE_MODAL_LOOPS_PERMITTED=1)

foreach(variant vantrice_juce vantrice_juce_host)
    add_library(${variant} STATIC ${VANTRICE_JUCE_VARIANT_SOURCES} $<TARGET_OBJECTS:vantrice_juce_shared>)
    target_link_libraries(${variant} PUBLIC vantrice_juce_config PRIVATE juce::juce_vst3_headers
        juce::juce_lilv_headers juce::juce_ara_headers)
    vantrice_juce_compile_options(${variant})
endforeach()
target_compile_definitions(vantrice_juce_host PUBLIC ${VANTRICE_JUCE_HOST_DEFINITIONS})
# Hosting the 2.4 interface needs Debian's clean-room headers, pluginterfaces/vst2.x under /usr/include,
# seen by JUCE's host code through the plug-in's shim that gives them the original interface's sizes.
target_include_directories(vantrice_juce_host PRIVATE ${PROJECT_SOURCE_DIR}/plugin/vst2-interface /usr/include)

# A program that hosts plug-ins or pumps the message loop (the validator, the tests, the fuzz targets)
# says so with this property; everything else gets the shipped JUCE. Our library hands the choice on.
define_property(TARGET PROPERTY VANTRICE_JUCE
    BRIEF_DOCS "host: link JUCE with plug-in hosting and modal loops"
    FULL_DOCS "Set to host on programs that load plug-ins or pump the message loop themselves.")
function(vantrice_use_hosting_juce target)
    set_target_properties(${target} PROPERTIES VANTRICE_JUCE host)
endfunction()
