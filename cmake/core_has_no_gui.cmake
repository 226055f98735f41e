# Fails when a source of a core layer names a header of Qt Gui or Qt Widgets by its folder; by its bare name it doesn't
# compile anyway. Run with -DROOT=… -DLAYERS=folder;folder…
foreach(LAYER ${LAYERS})
    file(GLOB SOURCES ${ROOT}/${LAYER}/*.h ${ROOT}/${LAYER}/*.cpp)
    foreach(SOURCE ${SOURCES})
        file(STRINGS ${SOURCE} STRAY REGEX "#include *[<\"](Qt(Gui|Widgets|Test)|desktop)/")
        if(STRAY)
            message(FATAL_ERROR "${SOURCE} is a core file and must not know the screen: ${STRAY}")
        endif()
    endforeach()
endforeach()
