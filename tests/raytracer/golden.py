"""The golden pictures: a tiny scene as it was when somebody looked at it."""

import os

import png

HERE = os.path.dirname(os.path.abspath(__file__))
CUBE = os.path.join(HERE, "cube.obj")

TINY = ["--size", "64x40", "--samples", "2", "--ao", "6", "--threads", "2"]
SCENES = {
    "plain": ["--spheres", "3"],
    "marble": ["--material", "marble", "--floor", "checker"],
    "wood": ["--material", "wood", "--spheres", "5", "--sphere-material", "wood", "--floor", "checker"],
    "mirror": ["--material", "mirror", "--spheres", "4", "--sphere-material", "mirror", "--floor", "none"],
}


class Scenes:
    """A test for each scene, of classes that say how one is compared (assert_golden)."""

    def test_plain(self):
        self.assert_golden("plain")

    def test_marble(self):
        self.assert_golden("marble")

    def test_wood(self):
        self.assert_golden("wood")

    def test_mirror(self):
        self.assert_golden("mirror")


def path(name):
    return os.path.join(HERE, "golden", name + ".png")


def read(name):
    return png.read(path(name))
