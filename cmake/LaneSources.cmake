# Sources of lane forms: compiled once for each instruction set, each time in a namespace of its
# own. The program picks the widest that the machine has when it starts. Options of a set apply to
# these sources alone, and contraction stays off: a fused multiplication has other bits.
set(MORVENKITE_LANE_SETS sse2)
set(MORVENKITE_LANE_WIDTH_sse2 2)
set(MORVENKITE_LANE_OPTIONS_sse2 "")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    list(APPEND MORVENKITE_LANE_SETS avx2 avx512)
    set(MORVENKITE_LANE_WIDTH_avx2 4)
    set(MORVENKITE_LANE_OPTIONS_avx2 -mavx2)
    set(MORVENKITE_LANE_WIDTH_avx512 8)
    set(MORVENKITE_LANE_OPTIONS_avx512
        -mavx512f -mavx512dq -mavx512vl -mavx512bw -mprefer-vector-width=512)
endif()

# morvenkite_lane_sources(<target> <source>...): adds the sources of this folder to the target.
function(morvenkite_lane_sources target)
    get_target_property(includes ${target} INCLUDE_DIRECTORIES)
    foreach(source ${ARGN})
        get_filename_component(name ${source} NAME_WE)
        foreach(set ${MORVENKITE_LANE_SETS})
            set(object ${name}_${set})
            add_library(${object} OBJECT ${source})
            target_include_directories(${object} PRIVATE ${includes})
            target_link_libraries(${object} PRIVATE morvenkite_flags)
            target_compile_options(${object} PRIVATE ${MORVENKITE_LANE_OPTIONS_${set}})
            target_compile_definitions(${object} PRIVATE
                LANE_SET=${set} LANE_WIDTH=${MORVENKITE_LANE_WIDTH_${set}})
            target_sources(${target} PRIVATE $<TARGET_OBJECTS:${object}>)
        endforeach()
    endforeach()
endfunction()
