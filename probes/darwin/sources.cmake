# The probes on the macOS kernel; the tests run the same on a pretended one.
set(vn_probes_darwin 
    ArgumentBlock.cpp
    BasicInfo.cpp
    CheckedSignal.cpp
    DiskWalk.cpp
    ListeningPorts.cpp
    ProcessList.cpp
    ProcessTable.cpp
    ProcessTexts.cpp
    Sensors.cpp
    SystemController.cpp
    SystemReadings.cpp)
list(TRANSFORM vn_probes_darwin PREPEND "${CMAKE_CURRENT_LIST_DIR}/")
