import QtQuick
import Varnet

Item {
}
