# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Renders with LuxCore for the programs, in a process of its own.

Commands come as lines of JSON on standard input, answers go as lines of JSON to what was standard
output when the process began. Standard output itself is turned to standard error, since the
denoiser prints there. Pictures are written as 32-bit floats, three a pixel, lowest row first, to
the file that a command names.

    {"id": 1, "do": "open", "stage": "ball", "config": TEXT, "scene": TEXT}
    {"id": 2, "do": "edit", "stage": "ball", "scene": TEXT, "objects": {"Ball": "material2"}}
    {"id": 3, "do": "run", "stage": "ball", "file": PATH, "samples": 64, "seconds": 0, "every": 0.5,
     "denoise": true}
    {"id": 4, "do": "stop", "stage": "ball"}
    {"id": 5, "do": "close", "stage": "ball"}

Texts are LuxCore properties, a line each. Each command is answered with {"id": N} and, if it
failed, "error". A run also tells {"id": N, "samples": n, "seconds": s, "picture": [width, height]}
whenever it has written a picture, with "done": true for the last. A run of a stage ends its run
before; an edit goes on with the run that it comes into, from the first sample. Standard input that
ends, ends the process.
"""

import array
import json
import os
import select
import sys
import time

# Number of the image pipeline without and with the denoiser.
PLAIN, DENOISED = 0, 1
# Between two looks at a renderer that has nothing new yet, in seconds.
LOOK = 0.01


class Answers:
    """Lines to the program, over a descriptor that nobody else here writes to."""

    def __init__(self):
        self.descriptor = os.dup(1)
        os.dup2(2, 1)

    def send(self, **message):
        data = (json.dumps(message) + "\n").encode()
        while data:
            data = data[os.write(self.descriptor, data):]


class Stage:
    """A scene that is rendered and edited while it is."""

    def __init__(self, luxcore, config, scene):
        self.luxcore = luxcore
        properties = luxcore.Properties()
        properties.SetFromString(config)
        self.config_properties = properties
        self.scene = luxcore.Scene()
        self.parse(scene)
        self.session = None
        self.run = None

    def parse(self, text):
        properties = self.luxcore.Properties()
        properties.SetFromString(text)
        self.scene.Parse(properties)

    def start(self, run):
        self.run = run
        if self.session is None:
            config = self.luxcore.RenderConfig(self.config_properties, self.scene)
            self.session = self.luxcore.RenderSession(config)
            self.session.Start()
        run.begin()

    def edit(self, text, objects):
        if self.session is not None:
            self.session.BeginSceneEdit()
        try:
            self.parse(text)
            for name, material in objects.items():
                self.scene.UpdateObjectMaterial(name, material)
            self.scene.RemoveUnusedMaterials()
            self.scene.RemoveUnusedTextures()
            self.scene.RemoveUnusedImageMaps()
        finally:
            if self.session is not None:
                self.session.EndSceneEdit()
        if self.run:
            self.run.begin()

    def look(self, answers):
        """Writes a picture if there is one to write. False when nothing is going on."""
        if self.run is None:
            return False
        session, run = self.session, self.run
        session.UpdateStats()
        samples = int(session.GetStats().Get("stats.renderengine.pass").GetInt())
        if run.wants_picture(samples):
            self.write_picture(run)
            done = run.is_done(samples)
            answers.send(id=run.id, samples=samples, seconds=run.seconds(), done=done,
                         picture=[self.width, self.height])
            run.wrote(samples)
            if done:
                self.end_run()
                return False
        return True

    def write_picture(self, run):
        film = self.session.GetFilm()
        self.width, self.height = film.GetWidth(), film.GetHeight()
        pixels = array.array("f", bytes(self.width * self.height * 3 * 4))
        film.GetOutputFloat(self.luxcore.FilmOutputType.RGB_IMAGEPIPELINE, pixels,
                            DENOISED if run.denoise else PLAIN, True)
        with open(run.file, "r+b") as output:
            output.write(pixels.tobytes())

    def end_run(self):
        """Stops the renderer; the next run begins afresh."""
        self.run = None
        if self.session is not None:
            self.session.Stop()
            self.session = None


class Run:
    """What a program wants to see of a stage."""

    def __init__(self, command):
        self.id = command["id"]
        self.file = command["file"]
        self.samples = max(1, int(command.get("samples", 1)))
        self.limit = float(command.get("seconds", 0))
        self.every = float(command.get("every", 1))
        self.denoise = bool(command.get("denoise", False))
        self.begin()

    def begin(self):
        self.started = time.monotonic()
        self.written_at = None
        self.written_samples = 0

    def seconds(self):
        return time.monotonic() - self.started

    def is_done(self, samples):
        return samples >= self.samples or 0 < self.limit <= self.seconds()

    def wants_picture(self, samples):
        if samples < 1 or samples == self.written_samples:
            return False
        if self.written_at is None or self.is_done(samples):
            return True
        return time.monotonic() - self.written_at >= self.every

    def wrote(self, samples):
        self.written_at = time.monotonic()
        self.written_samples = samples


class Service:
    def __init__(self, luxcore, answers):
        self.luxcore = luxcore
        self.answers = answers
        self.stages = {}
        self.rest = b""

    def commands(self, timeout):
        """Commands that have come, waiting at most so long; None at the end of input."""
        if not select.select([0], [], [], timeout)[0]:
            return []
        data = os.read(0, 1 << 20)
        if not data:
            return None
        lines = (self.rest + data).split(b"\n")
        self.rest = lines.pop()
        return [json.loads(line) for line in lines if line.strip()]

    def obey(self, command):
        name = command.get("stage", "")
        do = command["do"]
        if do == "open":
            self.close(name)
            self.stages[name] = Stage(self.luxcore, command["config"], command["scene"])
        elif do == "close":
            self.close(name)
        elif do == "edit":
            self.stages[name].edit(command["scene"], command.get("objects", {}))
        elif do == "run":
            self.stages[name].start(Run(command))
        elif do == "stop":
            self.stages[name].end_run()
        else:
            raise ValueError(f"unknown command {do}")

    def close(self, name):
        stage = self.stages.pop(name, None)
        if stage:
            stage.end_run()

    def serve(self):
        busy = False
        while True:
            commands = self.commands(LOOK if busy else None)
            if commands is None:
                return
            for command in commands:
                answer = {"id": command.get("id", 0)}
                try:
                    self.obey(command)
                except KeyError as error:
                    answer["error"] = f"the command lacks {error}"
                except (RuntimeError, ValueError, TypeError, OSError) as error:
                    answer["error"] = str(error)
                self.answers.send(**answer)
            busy = False
            for stage in list(self.stages.values()):
                try:
                    busy = stage.look(self.answers) or busy
                except (RuntimeError, OSError) as error:
                    self.answers.send(id=stage.run.id, done=True, error=str(error))
                    stage.end_run()

    def end(self):
        for name in list(self.stages):
            self.close(name)


def main():
    answers = Answers()
    # The package's folder, if it is not on the path by itself.
    sys.path[:0] = sys.argv[1:]
    try:
        import pyluxcore
    except ImportError as error:
        answers.send(id=0, error=str(error))
        return 1
    # Without a handler it would print every step.
    pyluxcore.Init(lambda message: None)
    answers.send(id=0, version=pyluxcore.Version())
    service = Service(pyluxcore, answers)
    try:
        service.serve()
    finally:
        service.end()
        pyluxcore.SetLogHandler(None)
    return 0


if __name__ == "__main__":
    sys.exit(main())
