# JUCE's modules, compiled once into one static library that our library, the tools, the tests and the
# plug-ins share. The modules' include paths and definitions are handed on to whoever links it.
add_library(vantrice_juce STATIC)

target_link_libraries(vantrice_juce
    PRIVATE
        juce::juce_core
        juce::juce_events
        juce::juce_data_structures
        juce::juce_audio_basics
        juce::juce_audio_formats
        juce::juce_audio_processors
        juce::juce_audio_devices
        juce::juce_audio_utils
        juce::juce_graphics
        juce::juce_gui_basics
        juce::juce_gui_extra
    PUBLIC
        juce::juce_recommended_config_flags)

target_compile_definitions(vantrice_juce
    PUBLIC
        JUCE_GLOBAL_MODULE_SETTINGS_INCLUDED=1
        JUCE_DISPLAY_SPLASH_SCREEN=0
        JUCE_REPORT_APP_USAGE=0
        JUCE_WEB_BROWSER=0
        JUCE_USE_CURL=0
        JUCE_USE_FLAC=1
        JUCE_USE_OGGVORBIS=1
        JUCE_PLUGINHOST_VST3=1
        JUCE_PLUGINHOST_LV2=1
        JUCE_PLUGINHOST_VST=1  # the validator hosts the 2.4-interface library as well
        JUCE_MODAL_LOOPS_PERMITTED=1  # tests pump the message loop; the code itself runs no modal loop
        JUCE_SILENCE_XCODE_15_LINKER_WARNING=1
        JUCE_JACK_CLIENT_NAME="Vantrice")

target_include_directories(vantrice_juce INTERFACE
    $<TARGET_PROPERTY:vantrice_juce,INCLUDE_DIRECTORIES>)
target_compile_definitions(vantrice_juce INTERFACE
    $<TARGET_PROPERTY:vantrice_juce,COMPILE_DEFINITIONS>)

# Hosting the 2.4 interface needs Debian's clean-room headers, pluginterfaces/vst2.x under /usr/include,
# seen by JUCE's host code through the plug-in's shim that gives them the original interface's sizes.
target_include_directories(vantrice_juce PRIVATE ${PROJECT_SOURCE_DIR}/plugin/vst2-interface /usr/include)

# JUCE's own code is not ours to keep warning-free.
target_compile_options(vantrice_juce PRIVATE -w)
# The LV2 host libraries inside JUCE call their C callbacks through pointers of a slightly different type,
# which clang's UBSan reports in every host run; it is not ours to change.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND VANTRICE_SANITIZE MATCHES "undefined")
    target_compile_options(vantrice_juce PRIVATE -fno-sanitize=function)
endif()

# Debian builds JUCE's image and audio codecs against the system's libraries instead of the copies JUCE
# carries, so they are linked from here.
find_package(PkgConfig REQUIRED)
pkg_check_modules(VANTRICE_JUCE_CODECS REQUIRED IMPORTED_TARGET libpng libjpeg flac vorbis vorbisenc vorbisfile ogg)
target_link_libraries(vantrice_juce PUBLIC PkgConfig::VANTRICE_JUCE_CODECS)
