#!/usr/bin/env python3
"""Tests of the ray tracer as its user meets it: pictures, messages, exit codes and files.

Usage: raytracer_test.py [--draw-golden] [CLASS[.test]...]

Reads from the environment:
  RAYTRACER             the program
  RAYTRACER_AVX_OBJECT  the object file of the code that is compiled for AVX
  RAYTRACER_QEMU        qemu-x86_64, to run the program on a processor without AVX
  RAYTRACER_NAMED_FILES  a library under which no file can be made without a name
With --draw-golden it draws the golden pictures anew instead of testing.
"""

import os
import pty
import re
import resource
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import golden
import png
from golden import CUBE, TINY

DATA = os.path.join(golden.HERE, "..", "..", "examples", "data")
PROGRAM = os.environ["RAYTRACER"]


def run(*arguments, program=(PROGRAM,), **options):
    return subprocess.run([*program, *arguments], capture_output=True, text=True, timeout=600, check=False, **options)


class RayTracerTest(unittest.TestCase):
    """A folder for each test, and the two ways in which a run ends."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        return self.path(name)

    def draw(self, *arguments, mesh=CUBE, output="picture.png", **options):
        """Draws a picture, and gives back its bytes."""
        result = run(mesh, "--output", self.path(output), *arguments, **options)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.line = result.stdout
        with open(self.path(output), "rb") as file:
            return file.read()

    def draw_picture(self, *arguments, **options):
        self.draw(*arguments, output="picture.png", **options)
        return png.read(self.path("picture.png"))

    def assert_refused(self, message, *arguments, **options):
        """Ends with code 2 and one line that holds the message, and leaves every file as it was."""
        before = {name: os.lstat(self.path(name)).st_mtime_ns for name in os.listdir(self.folder)}
        result = run(*arguments, **options)
        self.assertEqual((result.returncode, result.stdout), (2, ""), result.stderr)
        self.assertRegex(result.stderr, r"\Araytracer: [^\n]*\S\n\Z")
        self.assertIn(message, result.stderr)
        self.assertEqual({name: os.lstat(self.path(name)).st_mtime_ns for name in os.listdir(self.folder)}, before)

    def assert_mesh_refused(self, message, text):
        mesh = self.write("bad.obj", text)
        self.assert_refused(mesh + message, mesh, "--output", self.path("picture.png"), *TINY)

    def assert_option_refused(self, message, *arguments):
        self.assert_refused(message, CUBE, "--output", self.path("picture.png"), *arguments)


class Golden(golden.Scenes, RayTracerTest):
    """Pictures of a tiny scene are as they were when somebody looked at them."""

    def assert_golden(self, name):
        picture = self.draw_picture(*TINY, *golden.SCENES[name])
        differences = picture.differences(golden.read(name))
        # Another C library may round a sine or a power differently and so move a colour by one step, or a ray past an
        # edge: a handful of pixels at most.
        self.assertLessEqual(len(differences), 8, f"largest difference {max(differences, default=0)}")


class Pictures(RayTracerTest):
    """What the picture shows."""

    SQUARE = "v -1 0 0\nv 1 0 0\nv 1 2 0\nv -1 2 0\nf 1 2 3 4\n"

    def test_a_square_shows_where_the_camera_sees_it(self):
        # Seen from 4 units in front with 90 degrees from top to bottom, 40 pixels show 8 units: 5 pixels a unit. The
        # square reaches from -1 to 1 across and from 0 to 2 upwards, and the camera looks at (0, 0).
        mesh = self.write("square.obj", self.SQUARE)
        white = [[(255, 255, 255)] * 4] * 4
        for name in ("px", "nx", "py", "ny", "pz", "nz"):
            png.write(self.path(name + ".png"), white)
        picture = self.draw_picture("--size", "64x40", "--samples", "1", "--ao", "0", "--floor", "none", "--fov", "90",
                                    "--eye", "0,0,4", "--look-at", "0,0,0", "--sky", self.folder, mesh=mesh)
        sky = picture.rows[0][0]
        shown = {(x, y) for y in range(40) for x in range(64) if picture.rows[y][x] != sky}
        self.assertEqual(shown, {(x, y) for y in range(10, 20) for x in range(27, 37)})

    def test_the_floor_lights_what_is_above_it(self):
        # The middle of a table's underside, 0.3 above the floor, seen from in front. Of the rays to the sky, by the cosine
        # of their angle, all but one in 28 meet the floor within their reach: without its light, it is all but black.
        table = ("v -1 0.3 -1\nv 1 0.3 -1\nv 1 0.3 1\nv -1 0.3 1\nf 1 2 3 4\n"
                 "v 0 0 0\nv 0.01 0.3 0\nv -0.01 0.3 0\nf 5 6 7\n")
        picture = self.draw_picture("--size", "64x40", "--samples", "4", "--ao", "32", "--fov", "6", "--eye=0,0.1,3",
                                    "--look-at=0,0.31,0", mesh=self.write("table.obj", table))
        for channel in picture.rows[20][20]:
            self.assertGreater(channel, 25)

    def test_every_ray_through_a_pixel_is_counted(self):
        self.draw("--size", "30x20", "--samples", "3", "--ao", "0")
        self.assertRegex(self.line, r"\A1800 rays in \d+\.\d{3} seconds, \d+ rays per second \(\w+, \d+ threads?\)\n\Z")

    def test_the_same_command_draws_the_same_picture(self):
        self.assertTrue(self.draw(*TINY, "--spheres", "3") == self.draw(*TINY, "--spheres", "3"))

    def test_another_seed_draws_another_picture(self):
        self.assertFalse(self.draw(*TINY, "--seed", "1") == self.draw(*TINY, "--seed", "2"))

    def test_a_window_is_cut_out_of_the_whole_picture(self):
        options = [*TINY, "--spheres", "5", "--material", "wood"]
        whole = self.draw_picture(*options)
        for left, top, right, bottom in ((0, 0, 64, 40), (5, 7, 50, 33), (20, 16, 21, 17), (63, 39, 64, 40)):
            window = self.draw_picture(*options, "--crop", f"{left},{top},{right},{bottom}")
            self.assertEqual(window.rows, whole.crop(left, top, right, bottom).rows)

    def test_a_part_of_the_picture_is_drawn_from_the_middle(self):
        whole = self.draw_picture(*TINY)
        part = self.draw_picture(*TINY, "--part", "1/4")
        drawn = [(x, y) for y in range(40) for x in range(64) if part.rows[y][x] != (0, 0, 0)]
        self.assertEqual(len(drawn), 3 * 16 * 16)  # of twelve tiles
        self.assertTrue(all(part.rows[y][x] == whole.rows[y][x] for x, y in drawn))
        self.assertIn((32, 20), drawn)
        self.assertNotIn((0, 0), drawn)

    def test_a_mesh_in_other_axes_is_turned_into_the_worlds(self):
        with open(CUBE, encoding="utf-8") as file:
            lines = [line.split() for line in file if line.strip()]
        for line in lines:
            if line[0] == "v":
                line[1:] = [line[1], str(2 * float(line[2])), line[3]]  # twice as tall as wide
        upright = self.write("upright.obj", "\n".join(" ".join(line) for line in lines) + "\n")
        for line in lines:
            if line[0] == "v":  # x stays right; y, which was up, becomes z; z, which was backwards, becomes -y
                line[1:] = [line[1], str(-float(line[3])), line[2]]
        lying = self.write("lying.obj", "\n".join(" ".join(line) for line in lines) + "\n")
        expected = self.draw(*TINY, mesh=upright)
        self.assertTrue(expected == self.draw(*TINY, "--axes", "right,forwards,up", mesh=lying))
        self.assertFalse(expected == self.draw(*TINY, mesh=lying))

    def test_the_size_of_the_numbers_in_a_file_does_not_matter(self):
        with open(CUBE, encoding="utf-8") as file:
            text = file.read()
        expected = self.draw_picture(*TINY)
        for one, differing in (("1024", 0), ("1e30", 8), ("1e-30", 8)):  # how exact the numbers are read is not ours
            scaled = re.sub(r"(?m)^v .*", lambda vertex: vertex[0].replace("1", one), text)
            picture = self.draw_picture(*TINY, mesh=self.write("scaled.obj", scaled))
            self.assertLessEqual(len(picture.differences(expected)), differing, one)

    def test_a_cube_map_in_other_axes_shows_the_same_sky(self):
        colours = {"right": (200, 30, 30), "left": (30, 200, 30), "up": (30, 30, 200), "down": (200, 200, 30),
                   "forwards": (30, 200, 200), "backwards": (200, 30, 200)}
        pictures = []
        for axes in ("right,up,forwards", "right,up,backwards", "forwards,left,up", "down,backwards,left"):
            opposite = {"right": "left", "up": "down", "forwards": "backwards"}
            opposite |= {value: key for key, value in opposite.items()}
            for name, direction in zip("xyz", axes.split(",")):
                png.write(self.path(f"p{name}.png"), [[colours[direction]] * 8] * 8)
                png.write(self.path(f"n{name}.png"), [[colours[opposite[direction]]] * 8] * 8)
            pictures.append(self.draw("--size", "64x40", "--samples", "1", "--ao", "0", "--floor", "none",
                                      "--material", "mirror", "--spheres", "3", "--sphere-material", "mirror",
                                      "--sky", self.folder, "--sky-axes", axes))
        self.assertEqual(len(set(pictures)), 1)

    def test_a_cube_map_is_seen_from_inside(self):
        # Looking forwards, the +z face of a map in the usual axes fills the middle: its left half is on the left, and
        # its upper half is above.
        grey = [[(90, 90, 90)] * 8] * 8
        for name in ("px", "nx", "py", "ny", "nz"):
            png.write(self.path(name + ".png"), grey)
        quarters = [[(200, 0, 0)] * 4 + [(0, 200, 0)] * 4] * 4 + [[(0, 0, 200)] * 4 + [(200, 200, 0)] * 4] * 4
        png.write(self.path("pz.png"), quarters)
        picture = self.draw_picture("--size", "40x40", "--samples", "1", "--ao", "0", "--floor", "none", "--fov", "80",
                                    "--eye", "0,1,-50", "--look-at", "0,1,-60", "--sky", self.folder)
        (red, green), (blue, yellow) = [[picture.rows[y][x] for x in (10, 29)] for y in (10, 29)]
        self.assertTrue(red[0] > 100 > red[1] and green[1] > 100 > green[0], (red, green))
        self.assertTrue(blue[2] > 100 > blue[0] and yellow[0] > 100 > yellow[2], (blue, yellow))


class Packets(RayTracerTest):
    """One picture, whatever draws it."""

    def test_every_packet_and_number_of_threads_draws_the_same_bytes(self):
        scene = ["--spheres", "5", "--sphere-material", "mirror", "--floor", "checker", "--size", "160x100",
                 "--samples", "2", "--ao", "7"]
        for mesh in ("bunny.obj", "teapot.obj"):
            pictures = {self.draw(*scene, "--packet", packet, "--threads", threads, mesh=os.path.join(DATA, mesh))
                        for packet in ("scalar", "sse", "avx") for threads in ("1", "3")}
            self.assertEqual(len(pictures), 1)

    def test_rays_along_the_axes_give_the_same_bytes_in_every_packet(self):
        # The camera looks straight along an axis at a box of the hierarchy, so that many rays have a direction of
        # zero there, and it stands level with faces of the cube.
        for eye, look in (("0,1,5", "0,1,0"), ("1,2,5", "1,2,0"), ("-5,0,1", "0,0,1"), ("0,9,0", "0,0,0")):
            pictures = {self.draw("--size", "65x41", "--ao", "5", "--samples", "1", "--eye=" + eye, "--look-at=" + look,
                                  "--packet", packet) for packet in ("scalar", "sse", "avx")}
            self.assertEqual(len(pictures), 1)

    def test_rays_that_graze_a_roof_give_the_same_bytes_in_every_packet(self):
        # A single ray and a packet round differently where they meet a box, and a packet widens all but its y slab:
        # without the padding of the hierarchy the row of rays that run level, a hair above the roof, might meet its
        # box in one and miss it in the other.
        roof = self.write("roof.obj", "v -1 0 -1\nv 1 0 -1\nv 1 0 1\nv -1 0 1\nf 1 2 3 4\n"
                                      "v -1 1 -1\nv 1 1 -1\nv 1 1 1\nv -1 1 1\nf 5 6 7 8\n")
        self.draw("--size", "961x61", "--samples", "1", "--ao", "4", "--eye=0.1,1.0000001,5", "--look-at=0,1,0",
                  "--fov", "1", "--floor", "none", "--packet", "avx", "--compare", mesh=roof)
        self.assertTrue(self.line.startswith("0 of 58621 pixels differ"), self.line)

    def test_compare_counts_the_pixels_that_differ(self):
        self.draw(*TINY, "--packet", "avx", "--compare")
        self.assertRegex(self.line, r"\A0 of 2560 pixels differ between avx and scalar\n\d+ rays in [^\n]*\n\Z")

    def test_the_closing_line_names_the_packet(self):
        for packet in ("scalar", "sse", "avx"):
            self.draw(*TINY, "--packet", packet)
            self.assertIn(f"({packet}, 2 threads)", self.line)

    def test_code_for_avx_shares_no_symbol_with_other_code(self):
        symbols = subprocess.run(["nm", "--demangle", os.environ["RAYTRACER_AVX_OBJECT"]], capture_output=True,
                                 text=True, check=True).stdout.splitlines()
        shared = [line for line in symbols if re.search(r" [WVu] ", line)]
        compilers_own = r" (V (DW\.ref\.|typeinfo )|W __clang_call_terminate$)"  # tables, and a way to end
        self.assertEqual([line for line in shared if not re.search(compilers_own, line)], [])
        self.assertEqual([line for line in symbols if re.search(r" [TBDR] ", line) and "WalkAvx" not in line], [])


class WithoutAvx(RayTracerTest):
    """On a processor without AVX, which the machine emulator plays."""

    PROCESSOR = (os.environ.get("RAYTRACER_QEMU", "qemu-x86_64"), "-cpu", "Nehalem", PROGRAM)

    def test_avx_is_refused(self):
        self.assert_refused("--packet: this processor has no AVX", CUBE, "--output", self.path("picture.png"), *TINY,
                            "--packet", "avx", program=self.PROCESSOR)

    def test_auto_draws_with_sse(self):
        expected = png.read(self.path("picture.png")) if self.draw(*TINY) else None
        picture = self.draw_picture(*TINY, program=self.PROCESSOR)
        self.assertIn("(sse, 2 threads)", self.line)
        self.assertLessEqual(len(picture.differences(expected)), 8)  # sines and powers, see the golden pictures


class BadMeshes(RayTracerTest):
    """One line that says what is wrong with the mesh, and where."""

    VERTICES = "v 0 0 0\nv 1 0 0\nv 0 1 0\n"

    def test_no_such_file(self):
        self.assert_refused("missing.obj: No such file or directory", self.path("missing.obj"), *TINY)

    def test_a_folder(self):
        self.assert_refused(": is a folder, not a mesh", self.folder, *TINY)

    def test_not_an_obj_file(self):
        self.draw(*TINY, output="other.png")
        self.assert_refused(": is not a Wavefront OBJ file, it has no vertex", self.path("other.png"), "--output",
                            self.path("picture.png"), *TINY)

    def test_text_of_another_kind(self):
        self.assert_mesh_refused(": is not a Wavefront OBJ file, it has no vertex", "Dear reader,\n\nall is well.\n")

    def test_an_empty_file(self):
        self.assert_mesh_refused(": is not a Wavefront OBJ file, it has no vertex", "")

    def test_no_triangle(self):
        self.assert_mesh_refused(": has no triangle", self.VERTICES)

    def test_lines_and_points_only(self):
        self.assert_mesh_refused(": has no triangle", self.VERTICES + "l 1 2 3\np 1\n")

    def test_an_index_past_the_last_vertex(self):
        self.assert_mesh_refused(", line 4: a face names vertex '4' of 3", self.VERTICES + "f 1 2 4\n")

    def test_an_index_of_zero(self):
        self.assert_mesh_refused(", line 4: a face names vertex '0' of 3", self.VERTICES + "f 0 1 2\n")

    def test_a_relative_index_before_the_first_vertex(self):
        for index in ("-4", "-2147483648", "-4294967297"):
            self.assert_mesh_refused(f", line 4: a face names vertex '{index}' of 3",
                                     self.VERTICES + f"f -1 -2 {index}\n")
        self.assert_mesh_refused(", line 3: a face names vertex '-3' of 3", "v 0 0 0\nv 1 0 0\nf -1 -2 -3\nv 0 1 0\n")

    def test_an_index_that_wraps_around_to_a_vertex(self):
        for index in (2**31, 2**32 + 3, 2**64 + 3):
            self.assert_mesh_refused(f", line 4: a face names vertex '{index}' of 3", self.VERTICES + f"f 1 2 {index}/1/1\n")

    def test_an_index_that_is_no_number(self):
        for index in ("one", "3x", "+-3", "1.5", "#"):
            self.assert_mesh_refused(f", line 4: a face names vertex '{index}' of 3", self.VERTICES + f"f 1 2 {index}\n")

    def test_a_face_of_more_corners_than_the_reader_counts(self):
        self.draw(*TINY, mesh=self.write("good.obj", self.VERTICES + "f" + " 1 2 3" * 85 + "\n"))
        os.remove(self.path("picture.png"))
        self.assert_mesh_refused(", line 4: a face has more than 255 corners", self.VERTICES + "f" + " 1 2 3" * 86 + "\n")

    def test_lines_end_as_on_any_system(self):
        for end in ("\n", "\r\n", "\r"):
            self.assert_mesh_refused(", line 3: 'x' is not a finite coordinate",
                                     end.join(("v 0 0 0", "# a comment", "v 0 x 0", "")))

    def test_a_long_word_is_shortened_and_shown_in_ascii(self):
        word = "1" * 50 + "\x1b[31m\a\x7f\u00e9" + "2" * 100_000
        mesh = self.write("bad.obj", f"v 0 0 0\nv {word} 0 0\n")
        self.assert_refused(f"{mesh}, line 2: '{'1' * 30}...{'2' * 30}' is not a finite coordinate", mesh)
        mesh = self.write("bad.obj", "v 0 0 0\nv 1\x1b[31m\u00e9 0 0\n")
        self.assert_refused(f"{mesh}, line 2: '1?[31m??' is not a finite coordinate", mesh)

    def test_a_name_with_control_bytes_stays_one_line(self):
        self.assert_refused("a?b?.obj: No such file", self.path("a\nb\x1b.obj"), *TINY)

    def test_what_a_face_says_beside_its_vertices_does_not_matter(self):
        expected = self.draw(*TINY, mesh=self.write("plain.obj", self.VERTICES + "f 1 2 3\n"))
        for corner in ("1/", "1//", "1/0/0", "1/x", "1/\0", "1//1\0\0"):
            mesh = self.write("odd.obj", self.VERTICES + f"f {corner} 2/9/9 3\n")
            self.assertTrue(self.draw(*TINY, mesh=mesh) == expected, repr(corner))

    def test_a_number_of_hundreds_of_digits(self):
        self.assert_mesh_refused(": a coordinate has too many digits", f"v 1{'0' * 400}e-400 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n")

    def test_a_file_that_cannot_be_read(self):
        self.assert_refused("/proc/self/mem: cannot be read: Input/output error", "/proc/self/mem", *TINY)

    def test_coordinates_that_are_not_finite_numbers(self):
        for word in ("nan", "-nan", "inf", "-inf", "1e999", "one", "1.0x", "0x10"):
            self.assert_mesh_refused(f", line 2: '{word}' is not a finite coordinate",
                                     f"v 0 0 0\nv 1 {word} 0\nv 0 1 0\nf 1 2 3\n")

    def test_a_vertex_of_two_coordinates(self):
        self.assert_mesh_refused(", line 3: '' is not a finite coordinate", "v 0 0 0\nv 1 0 0\nv 0 1\nf 1 2 3\n")

    def test_all_vertices_at_one_point(self):
        self.assert_mesh_refused(": all vertices are at one point", "v 1 2 3\nv 1 2 3\nv 1 2 3\nf 1 2 3\n")

    def test_what_else_stands_in_a_file_does_not_matter(self):
        odd = "# a comment\r\nmtllib none.mtl\n\n\tv +0 0 0 1\nv 1e0 0 0\nv 0 1. 0\nvt 0 0\nvn nan 0 1\ns off\nf 1//1 2//1 3//1\n"
        self.draw(*TINY, mesh=self.write("odd.obj", odd + "f 1 1 1\nf 1 2\nt tag -1/0/0\nl 0\n"))


class BadOptions(RayTracerTest):
    """One line that says what is wrong with the command."""

    def test_no_mesh(self):
        self.assert_refused("mesh is required")

    def test_an_unknown_option(self):
        self.assert_option_refused("--colour", "--colour")

    def test_sizes(self):
        for size in ("0x40", "64x0", "0x0", "-1x40", "64", "64x", "64x40x2", "axb", "6 4x40", "16385x1",
                     "99999999999999999999x1"):
            self.assert_option_refused(f"--size: '{size}' is not WIDTHxHEIGHT", "--size=" + size)

    def test_windows(self):
        for window in ("0,0,65,40", "0,0,64,41", "9,0,9,40", "9,0,8,40", "0,9,64,9", "0,0,64", "0,0,64,40,1", "a,b,c,d",
                       "-1,0,64,40", "0.5,0,64,40", "0;0;64;40"):
            self.assert_option_refused(f"--crop: '{window}' is not X0,Y0,X1,Y1", "--size=64x40", "--crop=" + window)

    def test_axes(self):
        for axes in ("right", "right,up", "right,up,backwards,left", "right,,up", "east,up,south", "RIGHT,up,backwards"):
            self.assert_option_refused(f"--axes: '{axes}' is not three", "--axes=" + axes)
        for axes in ("right,left,up", "up,down,right", "up,up,up"):
            self.assert_option_refused(f"--axes: '{axes}': Incorrectly defined coordinate frame", "--axes=" + axes)
        self.assert_option_refused("--sky-axes: 'up,up,up': ", "--sky-axes=up,up,up")

    def test_points(self):
        for point in ("1,2", "1,2,3,4", "1,2,x", "nan,0,0", "inf,0,0", "1e5,0,0", "1 2 3"):
            self.assert_option_refused(f"--eye: '{point}' is not X,Y,Z", "--eye=" + point)
            self.assert_option_refused(f"--look-at: '{point}' is not X,Y,Z", "--look-at=" + point)

    def test_a_camera_that_stands_where_it_looks(self):
        self.assert_option_refused("--eye and --look-at: ", "--eye=1,2,3", "--look-at=1,2,3")

    def test_numbers_out_of_range(self):
        for option, value in (("--fov", "0"), ("--fov", "180"), ("--fov", "nan"), ("--samples", "0"), ("--samples", "-1"),
                              ("--ao", "4097"), ("--threads", "0"), ("--threads", "257"), ("--spheres", "65"),
                              ("--spheres", "x"), ("--seed", "-1"), ("--samples", "1.5")):
            self.assert_option_refused(option, f"{option}={value}")

    def test_unknown_names(self):
        for option in ("--material", "--sphere-material", "--floor", "--packet"):
            self.assert_option_refused(option, option + "=glass")

    def test_parts(self):
        for part in ("2/1", "1/0", "0/0", "1", "a/b", "1/2/3"):
            self.assert_option_refused(f"--part: '{part}' is not a fraction", "--part=" + part)

    def test_skies(self):
        self.assert_option_refused("px.png: ", "--sky", self.path("missing"))
        for name in ("px", "nx", "py", "ny", "pz"):
            png.write(self.path(name + ".png"), [[(1, 2, 3)] * 4] * 4)
        self.assert_option_refused("nz.png: ", "--sky", self.folder)
        self.write("nz.png", "no picture")
        self.assert_option_refused("nz.png: ", "--sky", self.folder)
        png.write(self.path("nz.png"), [[(1, 2, 3)] * 4] * 3)
        self.assert_option_refused("nz.png: is not square", "--sky", self.folder)
        png.write(self.path("nz.png"), [[(1, 2, 3)] * 2] * 2)
        self.assert_option_refused("nz.png: is not as large as px.png", "--sky", self.folder)

    def test_help_is_no_error(self):
        result = run("--help")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        for option in ("--size", "--output", "--eye", "--look-at", "--fov", "--threads", "--packet", "--axes", "--crop"):
            self.assertIn(option, result.stdout)


class Outputs(RayTracerTest):
    """The picture is there whole, or not at all."""

    def test_a_folder_that_does_not_exist(self):
        self.assert_refused("cannot be written: No such file or directory", CUBE, "--output",
                            self.path("missing/picture.png"), *TINY)

    def test_a_folder_in_the_place_of_the_picture(self):
        self.assert_refused(": is not a file", CUBE, "--output", self.folder, *TINY)
        self.assert_refused(": is not a file", CUBE, "--output", "", *TINY)

    def test_a_device(self):
        self.assert_refused("/dev/null: is not a file", CUBE, "--output", "/dev/null", *TINY)
        self.assertTrue(os.path.exists("/dev/null") and not os.path.isfile("/dev/null"))

    def test_a_full_disk_leaves_the_old_picture(self):
        def stop_at_one_block():
            resource.setrlimit(resource.RLIMIT_FSIZE, (512, 512))

        self.write("picture.png", "the old one")
        self.assert_refused("picture.png: cannot be written: File too large", CUBE, "--output",
                            self.path("picture.png"), *TINY, preexec_fn=stop_at_one_block)
        with open(self.path("picture.png"), encoding="utf-8") as file:
            self.assertEqual(file.read(), "the old one")

    def test_a_name_may_be_as_long_as_names_can_be(self):
        name = "p" * 251 + ".png"
        for _ in range(2):  # new, and in the place of an old one
            self.draw(*TINY, output=name)
            self.assertEqual(os.listdir(self.folder), [name])
        self.assert_refused("cannot be written: File name too long", CUBE, "--output", self.path("p" + name), *TINY)

    def test_a_link_that_leads_nowhere(self):
        os.symlink("missing.png", self.path("picture.png"))
        self.assert_refused("picture.png: is a link that leads nowhere", CUBE, "--output", self.path("picture.png"),
                            *TINY)
        os.symlink("loop.png", self.path("loop.png"))
        self.assert_refused("loop.png: is a link that leads nowhere", CUBE, "--output", self.path("loop.png"), *TINY)

    def test_a_mesh_in_the_place_of_the_picture_is_read_first(self):
        mesh = self.write("mesh.obj", Pictures.SQUARE)
        self.draw(*TINY, mesh=mesh, output="mesh.obj")
        self.assertEqual(png.read(mesh).width, 64)

    def test_help_into_a_full_disk(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            result = subprocess.run([PROGRAM, "--help"], stdout=full, stderr=subprocess.PIPE, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr),
                         (2, "raytracer: standard output cannot be written: No space left on device\n"))

    def test_the_closing_line_into_a_full_disk(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            result = subprocess.run([PROGRAM, CUBE, "--output", self.path("picture.png"), *TINY], stdout=full,
                                    stderr=subprocess.PIPE, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr),
                         (2, "raytracer: standard output cannot be written: No space left on device\n"))
        self.assertEqual(png.read(self.path("picture.png")).width, 64)

    def test_closed_streams_do_not_get_into_the_picture(self):
        expected = self.draw(*TINY)
        for streams in ((1,), (2,), (0, 1, 2)):
            os.remove(self.path("picture.png"))
            result = subprocess.run([PROGRAM, CUBE, "--output", self.path("picture.png"), *TINY], check=False,
                                    preexec_fn=lambda: [os.close(stream) for stream in streams],
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.assertEqual(result.returncode, 2 if 1 in streams else 0)
            with open(self.path("picture.png"), "rb") as file:
                self.assertTrue(file.read() == expected)

    def assert_whole_whenever_interrupted(self, number, code, **options):
        """The old picture or the new one, however long the program lived: it draws nothing, and only writes."""
        command = [PROGRAM, CUBE, "--output", self.path("picture.png"), "--size", "2000x1500", "--part", "0/1",
                   "--threads", "2"]
        start = time.monotonic()
        subprocess.run(command, check=True, capture_output=True, **options)
        length = time.monotonic() - start
        with open(self.path("picture.png"), "rb") as file:
            new = file.read()
        codes = set()
        for step in range(1, 13):
            self.write("picture.png", "the old one")
            with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                                  **options) as process:
                time.sleep(length * step / 12)
                process.send_signal(number)
                message = process.communicate(timeout=60)[1]
            codes.add(process.returncode)
            if process.returncode == 2:
                self.assertEqual(message, "raytracer: interrupted\n")
            self.assertEqual(os.listdir(self.folder), ["picture.png"])
            with open(self.path("picture.png"), "rb") as file:
                self.assertIn(file.read(), (b"the old one", new))
        self.assertLessEqual(codes, {code, 0, -number})  # the last before it listens for signals
        self.assertIn(code, codes)

    def test_nothing_is_left_of_a_run_that_is_interrupted(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            self.assert_whole_whenever_interrupted(number, 2)

    def test_nothing_is_left_of_a_run_that_is_killed(self):
        self.assert_whole_whenever_interrupted(signal.SIGKILL, -signal.SIGKILL)

    def test_signals_that_are_ignored_stay_ignored(self):
        command = [PROGRAM, CUBE, "--output", self.path("picture.png"), "--size", "1500x1000", "--part", "0/1"]
        with subprocess.Popen(command, stdout=subprocess.DEVNULL,
                              preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN)) as process:
            for _ in range(20):
                process.send_signal(signal.SIGHUP)
                time.sleep(0.01)
            self.assertEqual(process.wait(timeout=60), 0)

    def test_an_old_picture_is_replaced_and_nothing_else_is_left(self):
        self.write("picture.png", "the old one")
        self.draw(*TINY)
        self.assertEqual(os.listdir(self.folder), ["picture.png"])

    def test_a_link_stays_a_link(self):
        self.write("target.png", "the old one")
        os.symlink("target.png", self.path("picture.png"))
        self.draw(*TINY)
        self.assertTrue(os.path.islink(self.path("picture.png")))
        self.assertEqual(png.read(self.path("target.png")).width, 64)

    def test_the_bar_shows_on_a_terminal_only(self):
        leader, terminal = pty.openpty()
        command = [PROGRAM, CUBE, "--output", self.path("picture.png"), *TINY]
        with subprocess.Popen(command, stdout=terminal, stderr=terminal) as process:
            self.assertEqual(process.wait(timeout=600), 0)
        os.close(terminal)
        text = b""
        while select.select([leader], [], [], 0.1)[0]:
            try:
                text += os.read(leader, 4096)
            except OSError:  # how a terminal ends
                break
        os.close(leader)
        self.assertIn("100%", text.decode())
        self.assertIn("*" * 51, text.decode())
        self.draw(*TINY)  # which checks that there is nothing on standard error
        self.assertNotIn("%", self.line)


class OtherFileSystems(Outputs):
    """Where a file cannot be without a name: a library that is loaded first refuses to make such files."""

    def setUp(self):
        super().setUp()
        os.environ["LD_PRELOAD"] = os.environ["RAYTRACER_NAMED_FILES"]
        self.addCleanup(os.environ.pop, "LD_PRELOAD")

    def test_nothing_is_left_of_a_run_that_is_killed(self):
        self.skipTest("while its bytes are copied, the picture has a name that only the program itself can remove")


class Limits(RayTracerTest):
    """What the system does not give."""

    def limit_memory(self, size):
        def limit():
            resource.setrlimit(resource.RLIMIT_STACK, (8 << 20, resource.RLIM_INFINITY))
            resource.setrlimit(resource.RLIMIT_AS, (size, size))
        return limit

    def test_more_threads_than_there_can_be_are_refused_before_anything_is_read(self):
        missing = self.path("missing.obj")
        self.assert_refused("--threads: the system gives only ", missing, "--output", self.path("picture.png"),
                            "--threads", "256", preexec_fn=self.limit_memory(1 << 30))
        self.assert_refused("No such file or directory", missing, "--output", self.path("picture.png"),
                            "--threads", "2", preexec_fn=self.limit_memory(1 << 30))

    def test_a_mesh_is_drawn_whole_or_not_at_all_however_little_memory_there_is(self):
        side = 60
        lines = [f"v {x} {(x * y) % 7} {y}" for y in range(side) for x in range(side)]
        lines += [f"f {at} {at + 1} {at + side + 1} {at + side}" for at in range(1, side * (side - 1)) if at % side]
        mesh = self.write("hills.obj", "\n".join(lines) + "\n")
        arguments = ["--size", "160x100", "--samples", "1", "--ao", "1", "--threads", "1"]
        whole = self.draw(*arguments, mesh=mesh)
        os.remove(self.path("picture.png"))
        step = 256 << 10
        size = step
        while run("--help", preexec_fn=self.limit_memory(size)).returncode != 0:
            size += step
        refusals = 0
        while True:
            result = run(mesh, "--output", self.path("picture.png"), *arguments, preexec_fn=self.limit_memory(size))
            if result.returncode == 0:
                break
            self.assertEqual((result.returncode, result.stdout), (2, ""), result.stderr)
            self.assertRegex(result.stderr, r"\Araytracer: [^\n]*memory[^\n]*\n\Z")
            self.assertEqual(os.listdir(self.folder), ["hills.obj"])
            refusals += 1
            size += step
        self.assertGreater(refusals, 10)
        with open(self.path("picture.png"), "rb") as file:
            self.assertTrue(file.read() == whole)


def draw_golden():
    for name, options in golden.SCENES.items():
        result = run(CUBE, "--output", golden.path(name), *TINY, *options)
        print(name, result.stdout, result.stderr)


if __name__ == "__main__":
    if "--draw-golden" in sys.argv:
        draw_golden()
    else:
        unittest.main()
