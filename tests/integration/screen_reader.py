"""What a screen reader knows of the program, and where on the screen that is."""

import pyatspi

from session import turn, wait, xdotool

PROGRAM = "Varnet"
MOST = 2000  # things looked at in one search


def everything():
    """All that is showing, as a flat list."""
    desktop = pyatspi.Registry.getDesktop(0)
    queue = [application for application in desktop if application and application.name == PROGRAM]
    found = []
    while queue and len(found) < MOST:
        one = queue.pop(0)
        try:
            found.append((one.getRoleName(), one.name, one))
            queue.extend(child for child in one if child)
        except Exception:  # it has just gone
            continue
    return found


def find(role, name):
    """The one thing of this role and name; fails when it does not appear."""
    def look():
        turn()
        return [one for its_role, its_name, one in everything() if (its_role, its_name) == (role, name)]
    return wait(look, f"{role} “{name}”", seconds=30)[0]  # each look is hundreds of questions to the program


def click(thing):
    """Presses the middle of something with the real pointer."""
    place = thing.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    xdotool("mousemove", str(place.x + place.width // 2), str(place.y + place.height // 2), "click", "1")


def is_checked(thing):
    return thing.getState().contains(pyatspi.STATE_CHECKED)


def is_focused(thing):
    return thing.getState().contains(pyatspi.STATE_FOCUSED)
