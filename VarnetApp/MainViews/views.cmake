# The main window: its frame and the activity pages.
list(APPEND views_cpp)
list(
    APPEND
    views_qml
    MainViews/AppSidebar.qml
    MainViews/GroupListView.qml
    MainViews/MainWindow.qml
    MainViews/OverviewView.qml
    MainViews/PageHost.qml
    MainViews/ServersView.qml)
