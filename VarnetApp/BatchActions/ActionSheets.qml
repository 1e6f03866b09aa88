import QtQuick
import Varnet

// The sheets of a window in which something is stopped. Each opens when the store has something to review.
Item {
    StopSheet {}
    BatchStopSheet {}
    QuitDialog {}
}
