# Our code: one static library linked by the plug-ins, the tools and the tests.
file(GLOB_RECURSE VANTRICE_SOURCES CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/source/*.cpp
    ${PROJECT_SOURCE_DIR}/source/*.h)

add_library(vantrice STATIC ${VANTRICE_SOURCES})
target_include_directories(vantrice PUBLIC ${PROJECT_SOURCE_DIR}/source)
# The version has one declaration, the project's; the plug-ins, the processor and the validator read it.
target_compile_definitions(vantrice PUBLIC VANTRICE_VERSION="${PROJECT_VERSION}")
target_link_libraries(vantrice
    PUBLIC vantrice_juce_config
    INTERFACE "$<IF:$<STREQUAL:$<TARGET_PROPERTY:VANTRICE_JUCE>,host>,vantrice_juce_host,vantrice_juce>"
    PRIVATE juce::juce_recommended_warning_flags)

# Every file under resources/ is embedded; the code finds them by name (see frame/ResourceLoader.h).
file(GLOB_RECURSE VANTRICE_RESOURCE_FILES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*)
if(VANTRICE_RESOURCE_FILES)
    juce_add_binary_data(vantrice_resources
        NAMESPACE VantriceBinaryData
        HEADER_NAME VantriceBinaryData.h
        SOURCES ${VANTRICE_RESOURCE_FILES})
    target_link_libraries(vantrice PUBLIC vantrice_resources)
endif()

# Warning flags and the house options for every target of ours.
function(vantrice_target_defaults target)
    target_link_libraries(${target} PRIVATE juce::juce_recommended_warning_flags)
endfunction()
