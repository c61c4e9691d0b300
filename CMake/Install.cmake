# What `cmake --install` puts where. The programs find everything from their own place, so the prefix is free.
include(GNUInstallDirs)

install(TARGETS halvane halvane-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(documentation ${PROJECT_SOURCE_DIR}/Documentation)
install(FILES "${documentation}/Halvane User Manual.html" "${documentation}/MOX File Format.Specification.pdf"
        DESTINATION ${CMAKE_INSTALL_DATADIR}/halvane/Documentation)
install(DIRECTORY ${documentation}/Images ${documentation}/Samples DESTINATION ${CMAKE_INSTALL_DATADIR}/halvane/Documentation)

set(resources ${PROJECT_SOURCE_DIR}/Application/Resources)
install(FILES ${resources}/Desktop/halvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${resources}/Desktop/halvane.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 32 48 64 128 256)
    install(FILES ${resources}/AppIcons/Halvane_${size}.png DESTINATION ${icons}/${size}x${size}/apps RENAME halvane.png)
endforeach()
install(FILES ${resources}/AppIcons/Halvane_256@2x.png DESTINATION ${icons}/256x256@2/apps RENAME halvane.png)
install(FILES ${resources}/Sources/AppIcons/Halvane.svg DESTINATION ${icons}/scalable/apps RENAME halvane.svg)
