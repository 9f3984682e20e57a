"""Takes the picture of each state of a run while the window shows it."""
import dataclasses
import time
import typing

from run_folder import RunError
from shown import Shown

PATIENCE = 60  # seconds without progress for which a state is waited for
PROGRESS = ("bar", "notification", "status")


class StateMissed(RunError):
    """A state was not pictured: it had passed before, or it has not come."""


@dataclasses.dataclass(frozen=True)
class State:
    """Something that the host's windows show until they are made to go on."""
    name: str
    is_shown: typing.Callable[[Shown], bool]
    prompt: bool = False  # a prompt lies above the window
    # What makes the run go on once the picture has been taken.
    then: typing.Callable[["Photographer"], None] = lambda photographer: None


class Photographer:
    """Told of a run's events as they come, pictures its states in their order. A state that is shown is asked to be
    drawn; its picture counts when it was still shown after that, and is taken again when it was not."""

    def __init__(self, states, holds, camera, order, clock=time.monotonic):
        """`order` tells the host something; the holds are let go one after another by release()."""
        self.states = list(states)
        self.holds = list(holds)
        self.camera = camera
        self.order = order
        self.clock = clock
        self.shown = Shown()
        self._wait_for_next()

    @property
    def busy(self):
        return bool(self.states)

    def look(self, events):
        """Takes the next step, if it is time for one. Raises StateMissed."""
        for event in events:
            self.shown.take(event)
        if any(event.kind in PROGRESS for event in events):
            self._deadline = self.clock() + PATIENCE
        if self.busy:
            self._step()
            if self.busy and self.clock() > self._deadline:
                raise self.missed(f"nothing has happened for {PATIENCE} s")

    def release(self):
        self.holds.pop(0).release()

    def press(self, keys):
        self.camera.press(keys)

    def missed(self, why):
        return StateMissed(f"no picture of \"{self.states[0].name}\": {why}")

    def _wait_for_next(self):
        self._step = self._await_state
        self._deadline = self.clock() + PATIENCE

    def _is_shown(self):
        state = self.states[0]
        return state.is_shown(self.shown) and self.camera.is_ready(state.prompt)

    def _await_state(self):
        if self._is_shown():
            self._asked_at = self.shown.drawn
            self.order("draw")
            self._step = self._await_drawing
        elif not self.states[0].is_shown(self.shown) and any(state.is_shown(self.shown) for state in self.states[1:]):
            raise self.missed("it has passed")

    def _await_drawing(self):
        if self.shown.drawn == self._asked_at:
            return
        self._step = self._await_state
        if self._is_shown():
            self.camera.shoot(self.states[0].name)
            self._step = self._check_picture

    def _check_picture(self):
        if not self._is_shown():
            self._step = self._await_state
            return
        self.states.pop(0).then(self)
        self._wait_for_next()
