# Beside the main window: the panel by the tray, the settings, the welcome.
list(APPEND views_cpp)
list(
    APPEND
    views_qml
    UtilityViews/MenuPanel.qml
    UtilityViews/OnboardingView.qml
    UtilityViews/SettingsView.qml)
