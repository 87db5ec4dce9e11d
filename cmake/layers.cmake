# A layer is one static library timbersim_<name>, known to others as timbersim::<name>.

# Puts the sources of the folders into `variable`. A folder without a source is a mistake, not an empty layer.
function(layerSources variable)
    set(sources "")
    foreach(folder IN LISTS ARGN)
        file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
        if(NOT found)
            message(FATAL_ERROR "No source file in ${folder}")
        endif()
        list(APPEND sources ${found})
    endforeach()
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

function(addLayer name)  # timbersim_warnings is an INTERFACE target that carries the warning flags
    cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "SOURCES;USES")
    add_library(timbersim_${name} STATIC ${layer_SOURCES})
    add_library(timbersim::${name} ALIAS timbersim_${name})
    target_include_directories(timbersim_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(timbersim_${name} PUBLIC ${layer_USES} PRIVATE timbersim_warnings)
endfunction()

# For a layer with windows. An engine header may use a word like "slots", which Qt's macros must not eat.
function(useQt name)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.h)  # a class may have no source file
    target_sources(timbersim_${name} PRIVATE ${headers})
    set_target_properties(timbersim_${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_compile_definitions(timbersim_${name} PUBLIC QT_NO_KEYWORDS)
endfunction()
