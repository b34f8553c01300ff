"""Whether a reader of others takes the images that zeq keeps, and finds in them what zeq found.

usage: outside_reader.py ZEQ ZEQ_SAMPLES DIRECTORY [FILE...]
Imports the samples and the files, and keeps what comes of them below the directory.
Ends with 127 when the reader, the package ezdxf, is not there.
"""
import json
import math
import pathlib
import subprocess
import sys

try:
    from ezdxf.acis import entities, sab
except ImportError:
    print("skipped: the Python package ezdxf is not there; ./run test installs it")
    sys.exit(127)


def mend_reader():
    """What version 0.18.1 gets wrong, and what it does not know."""
    read_int = sab.SabDataLoader.read_int

    def read_int_if_there(loader, skip_sat=None):
        # Coedges and vertices have an integer in later versions only; it is read from all.
        token = loader.data[loader.index]
        return skip_sat if skip_sat is not None and token.tag != sab.Tags.INT else read_int(loader, skip_sat)

    sab.SabDataLoader.read_int = read_int_if_there
    restore = entities.restore_entity

    def restore_either(kind, loader, factory):
        # The second shell of a lump has to be of a class "next_shell", which there is not; and the owner of a coedge a
        # loop, though it may be a wire.
        found = loader.data[loader.index].value.name
        return restore({"next_shell": "shell", "loop": found}.get(kind, kind), loader, factory)

    entities.restore_entity = restore_either

    def register(name, base, fields):
        def restore_data(self, loader):
            self.tolerant = [loader.read_double() for _ in range(fields)]

        entities.register(type(name, (base,), {"type": f"{name}-{base.type}", "restore_data": restore_data}))

    register("tvertex", entities.Vertex, 1)
    register("tedge", entities.Edge, 1)
    register("tcoedge", entities.Coedge, 2)


def parts(image):
    """The faces of an image, whose bodies, lumps and shells it walks, and all edges."""
    loader = entities.SabLoader(image)
    loader.load_entities()
    faces = [
        face
        for body in loader.bodies()
        for lump in body.lumps()
        for shell in lump.shells()
        for face in shell.faces()
    ]
    return faces, [each for each in loader.entities.values() if isinstance(each, entities.Edge)]


def fault(image, count):
    faces, edges = parts(image)
    planes = [face.surface for face in faces if isinstance(face.surface, entities.Plane)]
    ours = [sum(count["faces"].values()), count["faces"]["plane"], sum(count["edges"].values())]
    theirs = [len(faces), len(planes), len(edges)]
    if theirs != ours:
        return f"{theirs} faces, planes and edges, but zeq has {ours}"
    bounds = [bound for plane in planes for bound in (*plane.u_bounds, *plane.v_bounds)]
    return "" if all(math.isinf(bound) for bound in bounds) else "the planes have bounds"


def import_and_keep(zeq, file, kept):
    """What zeq says of the blocks of a file, whose images it keeps."""
    words = [zeq, "--force", "--json", "import", "--geometry", kept, file]
    report = json.loads(subprocess.run(words, capture_output=True, check=False).stdout)
    return (report["summary"] or {}).get("geometry", [])


def main():
    zeq, samples, directory = sys.argv[1:4]
    directory = pathlib.Path(directory)
    subprocess.run([samples, directory / "samples"], capture_output=True, check=True)
    files = [*(directory / "samples").glob("*.stp"), *map(pathlib.Path, sys.argv[4:])]
    mend_reader()
    images = failed = 0
    for file in files:
        kept = directory / file.stem
        for block in import_and_keep(zeq, file, kept):
            path = kept / f"block_{block['block_id']}.sab"
            images += 1
            try:
                text = fault(path.read_bytes(), block["count"])
            except Exception as error:  # whatever the reader throws
                text = f"{type(error).__name__}: {error}"
            if text:
                failed += 1
                print(f"{path}: {text}")
    print(f"{images} images, {failed} not as zeq has them")
    return failed > 0 or images == 0


sys.exit(main())
