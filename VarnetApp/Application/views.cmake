# The process: launch, windows, tray, and the flame in the Dock.
list(APPEND views_cpp Application/DockFlame.cpp)
