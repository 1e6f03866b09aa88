# The optional account, and what a user writes to the makers.
list(
    APPEND
    views_cpp
    CloudViews/CloudModel.cpp
    CloudViews/CloudTexts.cpp
    CloudViews/FeedbackModel.cpp)
list(
    APPEND
    views_qml
    CloudViews/CloudModeRow.qml
    CloudViews/CloudPoint.qml
    CloudViews/CloudSettings.qml
    CloudViews/CloudView.qml
    CloudViews/ConsentSheet.qml
    CloudViews/FeedbackView.qml)
