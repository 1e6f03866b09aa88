pragma Singleton
import QtQuick
import Varnet

// Every text on screen goes through text(). It is a new function for each language, so that whatever called
// the old one is worked out anew when the language changes.
QtObject {
    readonly property var text: translator(AppLocalization.language)

    function translator(language: string): var {
        return english => AppLocalization.text(english);
    }
}
