// Levels of thermal pressure.
#pragma once

enum {
    kOSThermalPressureLevelNominal = 0,
    kOSThermalPressureLevelModerate,
    kOSThermalPressureLevelHeavy,
    kOSThermalPressureLevelTrapping,
    kOSThermalPressureLevelSleeping
};

extern "C" const char* const kOSThermalNotificationPressureLevelName;
