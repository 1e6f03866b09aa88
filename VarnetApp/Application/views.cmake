# The process: launch, windows, tray, and the flame in the Dock.
list(
    APPEND
    views_cpp
    Application/ApplicationDelegate.cpp
    Application/CollectionWatch.cpp
    Application/DockFlame.cpp
    Application/MenuBarLabel.cpp
    Application/TrayFace.cpp
    Application/UnixSignals.cpp
    Application/Windows.cpp)
