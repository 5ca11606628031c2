# Every JUCE module that the project uses, compiled once per build tree into one library that the
# plug-in, the tools and the tests link.

find_package (JUCE 7.0.5 CONFIG REQUIRED)
find_package (PkgConfig REQUIRED)
pkg_check_modules (AUDIO_CODECS REQUIRED IMPORTED_TARGET flac vorbisenc vorbisfile vorbis ogg)
pkg_check_modules (IMAGE_CODECS REQUIRED IMPORTED_TARGET libpng libjpeg zlib)

juce_set_vst2_sdk_path ("${CMAKE_SOURCE_DIR}/libs/vst2")

add_library (quilvane_juce STATIC)

set (juce_modules
    juce::juce_audio_basics
    juce::juce_audio_formats
    juce::juce_audio_processors
    juce::juce_core
    juce::juce_cryptography
    juce::juce_data_structures
    juce::juce_dsp
    juce::juce_events
    juce::juce_graphics
    juce::juce_gui_basics
    juce::juce_gui_extra)

target_link_libraries (quilvane_juce PRIVATE ${juce_modules} juce_vst2_sdk)

# Two classes of a module that would bring the system's sound devices with it.
target_sources (quilvane_juce PRIVATE ${CMAKE_CURRENT_LIST_DIR}/JuceKeyboard.cpp)

# The codecs that the modules leave to the system.
target_link_libraries (quilvane_juce INTERFACE
    PkgConfig::AUDIO_CODECS PkgConfig::IMAGE_CODECS ${CMAKE_DL_LIBS} Threads::Threads rt)

target_compile_definitions (quilvane_juce
    PUBLIC
        JUCE_DISPLAY_SPLASH_SCREEN=0
        JUCE_MODAL_LOOPS_PERMITTED=0
        JUCE_PLUGINHOST_VST=1
        JUCE_STRICT_REFCOUNTEDPOINTER=1
        JUCE_USE_CURL=0
        JUCE_USE_MP3AUDIOFORMAT=1
        JUCE_VST3_CAN_REPLACE_VST2=0
        JUCE_WEB_BROWSER=0
    INTERFACE
        $<TARGET_PROPERTY:quilvane_juce,COMPILE_DEFINITIONS>)

# The modules' headers, as the system's, so that our warnings stay about our own code.
target_include_directories (quilvane_juce SYSTEM INTERFACE
    $<TARGET_PROPERTY:quilvane_juce,INCLUDE_DIRECTORIES>)

# The modules' FLAC code shifts negative samples to the left, as their authors mean it.
if (QUILVANE_SANITIZE MATCHES undefined)
    get_target_property (format_sources juce::juce_audio_formats INTERFACE_SOURCES)
    list (FILTER format_sources INCLUDE REGEX "\\.cpp$")
    set_source_files_properties (${format_sources} PROPERTIES COMPILE_OPTIONS -fno-sanitize=shift)
endif()
