#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Tests of the golden renderer; every expected text is typed by hand."""

import itertools
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import golden_bricks  # noqa: E402
import golden_files  # noqa: E402
import golden_text  # noqa: E402
import golden_writer  # noqa: E402
import render_golden as rg  # noqa: E402

SCRIPT = Path(__file__).resolve().parent / "render_golden.py"
CATALOGUE = golden_bricks.read_catalogue()


def settings(**entries):
    return {"type": "settings", "value": entries}


def tree(entries):
    return {"type": "settings", "value": entries}


def value(content, **more):
    return settings(Prop_0=settings(Value=content, **more))


def color(red, green, blue, **more):
    parts = {"Red": red, "Green": green, "Blue": blue}
    return value(tree({name: ["i", part] for name, part in parts.items()}), **more)


def custom(name, link_type):
    return settings(Label=name, Name=name, ExtTypeID=link_type, Direction=0)


def brick(class_name, parameters=None, customs=(), plain=None):
    attributes = {
        "VireoExtCustomParameters": tree({"para%d" % i: c for i, c in enumerate(customs)})
    }
    if plain:
        attributes["BrickProperties"] = tree(plain)
    return settings(
        DAZStudioClassName=class_name,
        Attributes=tree(attributes),
        Parameters=tree(parameters or {}),
    )


def document(bricks, links=()):
    """A network; a link is "input brick.parameter < feeding brick", bricks counted from 1."""
    connections = {}
    for index, link in enumerate(links):
        target, source = (side.strip() for side in link.split("<"))
        number, param = target.split(".", 1)
        source, _, output = source.partition(".")
        connections["Connection_%d" % index] = settings(
            SourceBrick="Brick_" + number,
            TargetBrick="Brick_" + source,
            SourceParam=param,
            TargetParam=output or "result",
        )
    setup = settings(
        Bricks=tree({"Brick_%d" % i: b for i, b in enumerate(bricks, 1)}),
        Connections=tree(connections),
        BrickUserName="Vireo Brick User",
        Identifier="{00000000-0000-0000-0000-000000000000}",
    )
    return {"format": "sskn", "version": 1, "BrickSetup": setup}


def render(bricks, links=(), literal=True, map_files=False):
    network = golden_files.read_network(CATALOGUE, document(bricks, links))
    return rg.render_network(network, golden_writer.Writer(literal, map_files))


def lines_of(text, start):
    """The lines of the statement that begins with a text, without its head."""
    statement = next(part for part in text.split("\n\n") if part.lstrip("\n").startswith(start))
    return statement.strip("\n").split("\n")[1:]


class NumberTest(unittest.TestCase):
    def test_floats(self):
        expected = {
            0.5: "0.5",
            1.0: "1",
            0.0001: "0.0001",
            0.00001: "1e-05",
            0.000001: "1e-06",
            100000.0: "100000",
            1000000.0: "1e+06",
            1234567.0: "1.23457e+06",
            -1e38: "-1e+38",
            9.9999997e37: "1e+38",
            1e-100: "1e-100",
            255 / 255.0: "1",
            128 / 255.0: "0.501961",
            -0.0: "0",
            -2.0: "-2",
            6500.0: "6500",
        }
        for number, text in expected.items():
            self.assertEqual(golden_text.format_float(number), text)

    def test_single_precision_hides(self):
        self.assertEqual(golden_text.format_float(golden_text.to_single(0.1)), "0.1")
        self.assertEqual(golden_text.format_float(golden_text.to_single(1e38)), "1e+38")
        self.assertEqual(golden_text.format_float(golden_text.to_single(-1e300)), "-inf")


class FillTest(unittest.TestCase):
    def test_arguments_take_part(self):
        self.assertEqual(golden_text.fill("a%1 b%2", "x%1y", "Z"), "axZy b%2")
        self.assertEqual(golden_text.fill("a%1 b%2", "x%L1y", "Z"), "axZy b%2")
        self.assertEqual(golden_text.fill("a%1 b%2", "x%2y", "Z"), "axZy bZ")
        self.assertEqual(golden_text.fill("a%1 b%2", "x%0y", "Z"), "axZy b%2")
        self.assertEqual(golden_text.fill("a%1 b%2", "100%", "Z"), "a100% bZ")

    def test_lowest_first_and_all_of_it(self):
        self.assertEqual(golden_text.fill("%2 %1 %2 %L1", "a", "b"), "b a b a")
        self.assertEqual(golden_text.fill("%10 %2", "a", "b"), "b a")

    def test_too_many_arguments(self):
        self.assertEqual(golden_text.fill("x%1", "a", "b"), "xa")

    def test_per_cent_parenthesis_is_no_marker(self):
        self.assertEqual(golden_text.fill(golden_text.VALUE_OR_MAP_LINE, "Kd", "N"),
                         '\t"string  Kd" [%(N)]\n')

    def test_no_marker_above_the_basic_plane(self):
        self.assertEqual(
            golden_text.fill("%1 %\N{MATHEMATICAL BOLD DIGIT ONE}", "a", "b")[:3], "a %")


class CatalogueTest(unittest.TestCase):
    def test_order(self):
        """One root, then each family in one piece: `vireo bricks` lists them so."""
        def family(kind):
            return "texture" if kind in ("float", "color", "fresnel") else kind
        families = [family(description.kind) for description in CATALOGUE.values()]
        self.assertEqual(families.count("root"), 1)
        self.assertEqual([name for name, _ in itertools.groupby(families)],
                         ["root", "material", "volume", "texture"])

    def test_pairs(self):
        paired = [name for name, c in CATALOGUE.items() if c.pair_rows]
        self.assertEqual(len(paired), 6)
        for name in paired:
            rows = [row.name for row in CATALOGUE[name].pair_rows]
            number = "offset%1" if "BAnd" in name else "weight%1"
            self.assertEqual(rows, [number, "tex%1"])

    def test_lamps(self):
        items = CATALOGUE["VireoTexClrLampSpectrumBrick"].rows[0].items
        self.assertEqual((len(items), items[0], items[-1]), (66, "Alcohol", "Zn"))

    def test_fresnel_inputs(self):
        found = {
            "%s.%s" % (description.name, row.name)
            for description in CATALOGUE.values()
            for row in description.rows + description.pair_rows
            if row.link == "1016"
        }
        expected = {
            "VireoMatMetal2Brick.fresnel",
            "VireoVolClearBrick.fresnel",
            "VireoVolHomogeneousBrick.fresnel",
            "VireoTexFnlMixBrick.tex1",
            "VireoTexFnlMixBrick.tex2",
            "VireoTexFnlBiLerpBrick.v00",
            "VireoTexFnlBiLerpBrick.v01",
            "VireoTexFnlBiLerpBrick.v10",
            "VireoTexFnlBiLerpBrick.v11",
            "VireoTexFnlBAndBrick.tex%1",
            "VireoTexFnlMultiMixBrick.tex%1",
        }
        self.assertEqual(found, expected)


class ClassFileTest(unittest.TestCase):
    def file(self, class_name):
        return rg.class_file(CATALOGUE, CATALOGUE[class_name])

    def test_matte(self):
        self.assertEqual(
            self.file("VireoMatMatteBrick"),
            "== fresh literal ==\n"
            "\n"
            'MakeNamedMaterial "Lm_material1"\n'
            '\t"float   bumpmap" [0]\n'
            '\t"color   Kd" [0.901961 0.901961 0.901961]\n'
            '\t"float   sigma" [0]\n'
            '\t"string  type" ["matte"]\n'
            "== fresh placeholders ==\n"
            "\n"
            'MakeNamedMaterial "Lm_material1"\n'
            '\t"string  bumpmap" [%(LuxRender_Lm_001_bumpmap)]\n'
            '\t"string  Kd" [%(LuxRender_Lm_002_Kd)]\n'
            '\t"string  sigma" [%(LuxRender_Lm_003_sigma)]\n'
            '\t"string  type" ["matte"]\n'
            "== all locked ==\n"
            "\n"
            'MakeNamedMaterial "Lm_material1"\n'
            '\t"float   bumpmap" [0]\n'
            '\t"color   Kd" [0.901961 0.901961 0.901961]\n'
            '\t"float   sigma" [0]\n'
            '\t"string  type" ["matte"]\n'
            "== every input linked ==\n"
            "\n"
            'Texture "Lm_texture1" "float" "constant"\n'
            '\t"float   value" [1]\n'
            "\n"
            'Texture "Lm_texture2" "color" "constant"\n'
            '\t"color   value" [1 1 1]\n'
            "\n"
            'Texture "Lm_texture3" "float" "constant"\n'
            '\t"float   value" [1]\n'
            "\n"
            'MakeNamedMaterial "Lm_material1"\n'
            '\t"texture bumpmap" ["Lm_texture1"]\n'
            '\t"texture Kd" ["Lm_texture2"]\n'
            '\t"texture sigma" ["Lm_texture3"]\n'
            '\t"string  type" ["matte"]\n',
        )

    def test_checkerboard_order(self):
        text = self.file("VireoTexFltCheckerboardBrick")
        self.assertTrue(
            text.startswith(
                "== fresh literal ==\n"
                "\n"
                'Texture "Lm_texture1" "float" "checkerboard"\n'
                '\t"integer dimension" [2]\n'
                '\t"float   tex1" [1]\n'
                '\t"float   tex2" [0]\n'
                '\t"string  aamode" ["none"]\n'
                '\t"string  mapping" ["uv"]\n'
                '\t"float   uscale" [1]\n'
                '\t"float   vscale" [1]\n'
                '\t"vector  v1" [1 0 0]\n'
                '\t"vector  v2" [0 1 0]\n'
                '\t"string  coordinates" ["global"]\n'
                '\t"vector  translate" [1 0 0]\n'
                '\t"vector  rotate" [1 0 0]\n'
                '\t"vector  scale" [1 0 0]\n'
                "== fresh placeholders ==\n"
            )
        )

    def test_black_body_temperature_is_plain(self):
        text = self.file("VireoTexClrBlackBodyBrick")
        self.assertIn('\t"float   temperature" [6500]\n', text)
        self.assertIn('\t"float   temperature" [$(LuxRender_Lm_001_temperature)]\n', text)

    def test_head_only(self):
        head = '\nTexture "Lm_texture1" "float" "blender_clouds"\n'
        titles = ("fresh literal", "fresh placeholders", "all locked", "every input linked")
        expected = "".join("== %s ==\n%s" % (title, head) for title in titles)
        self.assertEqual(self.file("VireoTexFltBlenderCloudsBrick"), expected)

    def test_odd_type_words(self):
        head = 'Texture "Lm_texture1" "color" "%s"\n'
        self.assertIn(head % "tubulateddata", self.file("VireoTexClrTabulatedDataBrick"))
        self.assertIn(head % "irregular data", self.file("VireoTexClrIrregularDataBrick"))
        self.assertIn(head % "regular data", self.file("VireoTexClrRegularDataBrick"))

    def test_band(self):
        text = self.file("VireoTexClrBAndBrick")
        self.assertTrue(
            text.startswith(
                "== fresh literal ==\n"
                "\n"
                'Texture "Lm_texture1" "color" "band"\n'
                '\t"float   amount" [0]\n'
                "== fresh placeholders ==\n"
            )
        )
        self.assertIn(
            "== count 3, fresh placeholders ==\n"
            "\n"
            'Texture "Lm_texture1" "color" "band"\n'
            '\t"string  amount" [%(LuxRender_Lm_001_amount)]\n'
            '\t"string  tex1" [%(LuxRender_Lm_002_tex1)]\n'
            '\t"string  tex2" [%(LuxRender_Lm_003_tex2)]\n'
            '\t"string  tex3" [%(LuxRender_Lm_004_tex3)]\n'
            '\t"float   offsets" [0 0 0]\n'
            "== count 3, all locked ==\n",
            text,
        )

    def test_multi_mix_links_leave_weights_alone(self):
        text = self.file("VireoTexFltMultiMixBrick")
        self.assertTrue(text.startswith('== fresh literal ==\n\nTexture "Lm_texture1" "float" "mu'))
        self.assertTrue(
            text.endswith(
                "== count 3, every input linked ==\n"
                "\n"
                'Texture "Lm_texture2" "float" "constant"\n'
                '\t"float   value" [1]\n'
                "\n"
                'Texture "Lm_texture3" "float" "constant"\n'
                '\t"float   value" [1]\n'
                "\n"
                'Texture "Lm_texture4" "float" "constant"\n'
                '\t"float   value" [1]\n'
                "\n"
                'Texture "Lm_texture1" "float" "multimix"\n'
                '\t"texture tex1" ["Lm_texture2"]\n'
                '\t"texture tex2" ["Lm_texture3"]\n'
                '\t"texture tex3" ["Lm_texture4"]\n'
                '\t"float   weights" [0 0 0]\n'
            )
        )

    def test_color_constant(self):
        name = "LuxRender_Lm_002_scale"
        self.assertEqual(
            self.file("VireoTexClrConstantBrick"),
            "== fresh literal ==\n"
            "\n"
            'Texture "Lm_texture1" "color" "constant"\n'
            '\t"color   value" [1 1 1]\n'
            "== fresh placeholders ==\n"
            "\n"
            'Texture "Lm_texture1" "color" "constant"\n'
            '\t"string  value" [%(LuxRender_Lm_001_value)]\n'
            "\n"
            'Texture "Lm_texture2" "color" "scale"\n'
            '\t"texture tex1" ["Lm_texture1"]\n'
            '\t"color   tex2" [$(' + name + ") $(" + name + ") $(" + name + ")]\n"
            "== all locked ==\n"
            "\n"
            'Texture "Lm_texture1" "color" "constant"\n'
            '\t"color   value" [1 1 1]\n'
            "\n"
            'Texture "Lm_texture2" "color" "scale"\n'
            '\t"texture tex1" ["Lm_texture1"]\n'
            '\t"color   value" [1 1 1]\n'
            "== every input linked ==\n"
            "\n"
            'Texture "Lm_texture1" "color" "constant"\n'
            '\t"color   value" [1 1 1]\n',
        )


class WalkTest(unittest.TestCase):
    ROOT = brick("VireoRootBrick")

    def test_nothing_connected(self):
        sections = render([self.ROOT])
        self.assertEqual(sections.material, "")
        self.assertEqual(sections.mesh.count("\n"), 8)
        self.assertNotIn("displacementmap", sections.mesh)

    def test_numbers_are_taken_before_inputs(self):
        bricks = [
            self.ROOT,
            brick("VireoMatMixBrick"),
            brick("VireoMatMatteBrick"),
            brick("VireoMatNullBrick"),
            brick("VireoTexFltConstantBrick"),
        ]
        links = [
            "1.material < 2",
            "2.namedmaterial1 < 3",
            "2.namedmaterial2 < 4",
            "2.amount < 5",
            "3.sigma < 5",
        ]
        self.assertEqual(
            render(bricks, links).material,
            "\n"
            'Texture "Lm_texture1" "float" "constant"\n'
            '\t"float   value" [1]\n'
            "\n"
            'MakeNamedMaterial "Lm_material2"\n'
            '\t"float   bumpmap" [0]\n'
            '\t"color   Kd" [0.901961 0.901961 0.901961]\n'
            '\t"texture sigma" ["Lm_texture1"]\n'
            '\t"string  type" ["matte"]\n'
            "\n"
            'MakeNamedMaterial "Lm_material3"\n'
            '\t"float   bumpmap" [0]\n'
            '\t"string  type" ["null"]\n'
            "\n"
            'MakeNamedMaterial "Lm_material1"\n'
            '\t"float   bumpmap" [0]\n'
            '\t"string  namedmaterial1" ["Lm_material2"]\n'
            '\t"string  namedmaterial2" ["Lm_material3"]\n'
            '\t"texture amount" ["Lm_texture1"]\n'
            '\t"string  type" ["mix"]\n'
            "\n"
            'NamedMaterial "Lm_material1"\n',
        )

    def test_one_volume_twice_and_displacement_last(self):
        bricks = [self.ROOT, brick("VireoVolClearBrick"), brick("VireoTexFltConstantBrick")]
        links = ["1.Interior < 2", "1.Exterior < 2", "1.displacementmap < 3"]
        sections = render(bricks, links)
        self.assertEqual(
            sections.material,
            "\n"
            'MakeNamedVolume "Lm_volume1" "clear"\n'
            '\t"float   fresnel" [1.5]\n'
            '\t"color   absorption" [0 0 0]\n'
            "\n"
            'Interior "Lm_volume1"\n'
            "\n"
            'Exterior "Lm_volume1"\n'
            "\n"
            'Texture "Lm_texture1" "float" "constant"\n'
            '\t"float   value" [1]\n',
        )
        self.assertEqual(
            sections.mesh,
            '\t"bool    generatetangents" ["false"]\n'
            '\t"string  displacementmap" ["Lm_texture1"]\n'
            '\t"float   dmscale" [0.1]\n'
            '\t"float   dmoffset" [0]\n'
            '\t"bool    dmnormalsmooth" ["true"]\n'
            '\t"bool    dmnormalsplit" ["false"]\n'
            '\t"bool    dmsharpboundary" ["false"]\n'
            '\t"integer nsubdivlevels" [0]\n'
            '\t"string  subdivscheme" ["loop"]\n',
        )

    def test_several_links_write_nothing(self):
        bricks = [self.ROOT, brick("VireoMatMatteBrick"), *2 * [brick("VireoTexFltConstantBrick")]]
        links = ["1.material < 2", "2.sigma < 3", "2.sigma < 4"]
        text = render(bricks, links).material
        self.assertNotIn("sigma", text)
        self.assertNotIn("Texture", text)
        bricks = [self.ROOT, brick("VireoMatMatteBrick"), brick("VireoMatNullBrick")]
        self.assertEqual(render(bricks, ["1.material < 2", "1.material < 3"]).material, "")

    def test_unknown_class_writes_nothing(self):
        bricks = [self.ROOT, brick("VireoMatMatteBrick"), brick("DzShaderBrickX")]
        text = render(bricks, ["1.material < 2", "2.sigma < 3.anything"]).material
        self.assertNotIn("sigma", text)
        self.assertIn("Kd", text)
        self.assertEqual(render(bricks, ["1.material < 3"]).material, "")

    def test_known_and_unknown_are_two_links(self):
        bricks = [self.ROOT, brick("VireoMatMatteBrick"), brick("DzShaderBrickX")]
        self.assertEqual(render(bricks, ["1.material < 2", "1.material < 3"]).material, "")

    def test_illegal_links_are_dropped(self):
        bricks = [self.ROOT, brick("VireoMatMatteBrick"), brick("VireoTexClrConstantBrick")]
        links = ["1.material < 2", "2.sigma < 3", "2.Kd < 3.value", "2.type < 3"]
        self.assertNotIn("Texture", render(bricks, links).material)

    def test_loops_are_dropped(self):
        bricks = [self.ROOT, *3 * [brick("VireoMatMixBrick")]]
        links = ["1.material < 2", "2.namedmaterial1 < 3", "3.namedmaterial1 < 2"]
        text = render(bricks, links + ["2.namedmaterial2 < 2"]).material
        self.assertEqual(text.count("namedmaterial"), 1)

    def test_last_root_counts(self):
        bricks = [self.ROOT, brick("VireoMatNullBrick"), self.ROOT]
        self.assertEqual(render(bricks, ["1.material < 2"]).material, "")
        self.assertIn("NamedMaterial", render(bricks, ["3.material < 2"]).material)

    def test_no_root(self):
        with self.assertRaises(ValueError):
            render([brick("VireoMatMatteBrick")])


class PlaceholderTest(unittest.TestCase):
    def test_locked_stays_literal_and_numbers_follow_use(self):
        bricks = [
            brick("VireoRootBrick"),
            brick("VireoMatGlassBrick", {"Kr": color(255, 0, 128, Locked=True)}),
        ]
        text = render(bricks, ["1.material < 2"], literal=False).material
        self.assertEqual(
            lines_of(text, "MakeNamedMaterial"),
            [
                '\t"string  bumpmap" [%(LuxRender_Lm_001_bumpmap)]',
                '\t"color   Kr" [1 0 0.501961]',
                '\t"string  Kt" [%(LuxRender_Lm_002_Kt)]',
                '\t"string  index" [%(LuxRender_Lm_003_index)]',
                '\t"string  cauchyb" [%(LuxRender_Lm_004_cauchyb)]',
                '\t"string  film" [%(LuxRender_Lm_005_film)]',
                '\t"string  filmindex" [%(LuxRender_Lm_006_filmindex)]',
                '\t"bool    architectural" [$(LuxRender_Lm_007_architectural)]',
                '\t"string  type" ["glass"]',
            ],
        )

    def test_same_name_other_property(self):
        bricks = [brick("VireoRootBrick"), brick("VireoMatMixBrick")]
        bricks += 2 * [brick("VireoMatNullBrick")]
        links = ["1.material < 2", "2.namedmaterial1 < 3", "2.namedmaterial2 < 4"]
        text = render(bricks, links, literal=False).material
        for number in ("001", "002", "003"):
            self.assertIn('\t"string  bumpmap" [%%(LuxRender_Lm_%s_bumpmap)]\n' % number, text)

    def test_number_grows_past_three_digits(self):
        writer = golden_writer.Writer(False)
        for _ in range(1000):
            name = writer.placeholder(golden_bricks.Property("Kd", "color", golden_bricks.BLACK))
        self.assertEqual(name, "LuxRender_Lm_1000_Kd")

    def test_image_property(self):
        fresnel = brick("VireoTexFnlFresnelNameBrick", {"filename": value("gold.nk")})
        bricks = [brick("VireoRootBrick"), brick("VireoMatMetal2Brick"), fresnel]
        links = ["1.material < 2", "2.fresnel < 3"]
        literal = render(bricks, links).material
        self.assertIn('\t"string  filename" ["gold.nk"]\n\t"string  name" ["aluminium"]\n', literal)
        text = render(bricks, links, literal=False).material
        self.assertIn('\t"string  filename" [$(LuxRender_Lm_002_filename)]\n', text)


class ImageMapTest(unittest.TestCase):
    ROOT, MATTE = brick("VireoRootBrick"), brick("VireoMatMatteBrick")
    LINKS = ["1.material < 2", "2.Kd < 3"]

    def text(self, filename, literal=True, map_files=False, links=LINKS):
        image = brick("VireoTexClrImageMapBrick", {"filename": filename} if filename else {})
        bricks = [self.ROOT, self.MATTE, image, brick("VireoTexClrHarlequinBrick")]
        return render(bricks, links, literal, map_files).material

    def test_without_map(self):
        text = self.text(color(255, 0, 0))
        self.assertTrue(
            text.startswith(
                '\nTexture "Lm_texture1" "color" "constant"\n\t"color   value" [1 0 0]\n\nMake'
            )
        )

    def test_white_map(self):
        text = self.text(color(255, 255, 255, MapImage="a.png"))
        self.assertEqual(text.count("Texture"), 1)
        self.assertIn('\t"color   filename" [1 1 1]\n', text)
        self.assertIn('\t"texture Kd" ["Lm_texture1"]\n', text)

    def test_tinted_map(self):
        text = self.text(color(255, 0, 0, MapImage="a.png"))
        self.assertIn('\t"color   filename" [1 0 0]\n', text)
        self.assertIn(
            '\n\nTexture "Lm_texture2" "color" "scale"\n'
            '\t"texture tex1" ["Lm_texture1"]\n'
            '\t"color   tex2" [1 0 0]\n\n',
            text,
        )
        self.assertIn('\t"texture Kd" ["Lm_texture2"]\n', text)

    def test_transparent_white_is_a_tint(self):
        parts = {"Red": 255, "Green": 255, "Blue": 255, "Alpha": 0}
        white = tree({name: ["i", part] for name, part in parts.items()})
        text = self.text(value(white, MapImage="a.png"))
        self.assertIn('\t"color   tex2" [1 1 1]\n', text)

    def test_map_files(self):
        text = self.text(color(255, 0, 0, MapImage="maps/%1 a.png"), map_files=True)
        self.assertIn('\t"string  filename" ["maps/%1 a.png"]\n', text)
        self.assertIn('\t"color   tex2" [1 0 0]\n', text)

    def test_placeholders(self):
        text = self.text(None, literal=False)
        self.assertIn('\t"string  filename" [%(LuxRender_Lm_002_filename)]\n', text)
        self.assertIn('\t"color   tex2" [$(LuxRender_Lm_002_filename)]\n', text)
        self.assertIn('\t"string  sigma" [%(LuxRender_Lm_012_sigma)]\n', text)

    def test_locked_white_needs_no_wrapper(self):
        text = self.text(color(255, 255, 255, Locked=True), literal=False)
        self.assertIn('\t"color   filename" [1 1 1]\n', text)
        self.assertNotIn('"scale"', text)

    def test_linked_filename(self):
        links = self.LINKS + ["3.filename < 4"]
        self.assertNotIn("harlequin", self.text(None, links=links))
        mapped = self.text(color(255, 0, 0, MapImage="a.png"), links=links)
        self.assertIn('\t"texture filename" ["Lm_texture2"]\n', mapped)
        self.assertIn('\t"texture Kd" ["Lm_texture1"]\n', mapped)
        self.assertNotIn('"scale"', mapped)

    def test_float_tint(self):
        image = brick("VireoTexFltImageMapBrick", {"filename": value(0.25, MapImage="a.png")})
        bricks = [self.ROOT, self.MATTE, image]
        text = render(bricks, ["1.material < 2", "2.sigma < 3"]).material
        self.assertIn(
            'Texture "Lm_texture2" "float" "scale"\n'
            '\t"texture tex1" ["Lm_texture1"]\n'
            '\t"float   tex2" [0.25]\n',
            text,
        )

    def test_color_constant_scales(self):
        constant = brick(
            "VireoTexClrConstantBrick", {"value": color(255, 0, 51), "scale": value(-0.5)}
        )
        text = render([self.ROOT, self.MATTE, constant], self.LINKS).material
        self.assertIn('\t"color   value" [-0.5 0 -0.1]\n', text)

    def test_color_constant_linked_and_locked(self):
        constant = brick("VireoTexClrConstantBrick", {"scale": value(0.5, Locked=True)})
        bricks = [self.ROOT, self.MATTE, constant, brick("VireoTexClrHarlequinBrick")]
        text = render(bricks, self.LINKS + ["3.value < 4"], literal=False).material
        self.assertIn(
            '\nTexture "Lm_texture2" "color" "harlequin"\n'
            "\n"
            'Texture "Lm_texture1" "color" "constant"\n'
            '\t"texture value" ["Lm_texture2"]\n'
            "\n"
            'Texture "Lm_texture3" "color" "scale"\n'
            '\t"texture tex1" ["Lm_texture1"]\n'
            '\t"color   value" [0.5 0.5 0.5]\n',
            text,
        )


class CustomInputTest(unittest.TestCase):
    def test_kinds(self):
        customs = [
            custom("f", 1009),
            custom("c", ["i", 1010]),
            custom("v", 1012),
            custom("m", 1014),
            custom("s", 1015),
            custom("n", 1016),
            custom("unknown", 1017),
            custom("vol", 1008),
        ]
        bricks = [
            brick("VireoRootBrick"),
            brick("VireoMatNullBrick", {"bumpmap": value(0.5), "s": value("a b")}, customs),
            brick("VireoVolClearBrick"),
        ]
        links = ["1.material < 2", "2.vol < 3"]
        text = render(bricks, links).material
        self.assertEqual(
            lines_of(text, "MakeNamedMaterial"),
            [
                '\t"float   bumpmap" [0.5]',
                '\t"float   f" [0]',
                '\t"color   c" [0 0 0]',
                '\t"string  s" ["a b"]',
                '\t"float   n" [0]',
                '\t"string  type" ["null"]',
            ],
        )
        self.assertIn('MakeNamedVolume "Lm_volume1" "clear"\n', text)
        named = render(bricks, links, literal=False).material
        self.assertIn('\t"string  s" [$(LuxRender_Lm_004_s)]\n', named)
        self.assertIn('\t"string  f" [%(LuxRender_Lm_002_f)]\n', named)
        self.assertIn('\t"string  c" [%(LuxRender_Lm_003_c)]\n', named)

    def test_equal_names(self):
        parameters = {"Kd#2": color(0, 0, 255), "bumpmap": value(0), "Kd": color(255, 0, 0)}
        matte = brick("VireoMatMatteBrick", parameters, [custom("Kd", 1010)])
        bricks = [brick("VireoRootBrick"), matte, brick("VireoTexClrHarlequinBrick")]
        text = render(bricks, ["1.material < 2", "2.Kd < 3"]).material
        self.assertEqual(
            lines_of(text, "MakeNamedMaterial"),
            [
                '\t"texture Kd" ["Lm_texture1"]',
                '\t"float   bumpmap" [0]',
                '\t"float   sigma" [0]',
                '\t"color   Kd" [0 0 1]',
                '\t"string  type" ["matte"]',
            ],
        )

    def test_missing_name(self):
        matte = brick("VireoMatNullBrick", {}, ["stray", settings(ExtTypeID=1009)])
        text = render([brick("VireoRootBrick"), matte], ["1.material < 2"]).material
        self.assertIn('\t"float   arg_1" [0]\n', text)

    def test_root_and_band_write_no_customs(self):
        band = brick("VireoTexFltBAndBrick", {}, [custom("x", 1009)])
        root = brick("VireoRootBrick", {}, [custom("y", 1009)])
        bricks = [root, brick("VireoMatNullBrick"), band]
        sections = render(bricks, ["1.material < 2", "2.bumpmap < 3"])
        self.assertEqual(lines_of(sections.material, "Texture"), ['\t"float   amount" [0]'])
        self.assertEqual(sections.mesh.count("\n"), 8)

    def test_markers_in_names(self):
        matte = brick("VireoMatNullBrick", {"a%1": value(7)}, [custom("a%1", 1009)])
        bricks = [brick("VireoRootBrick"), matte]
        text = render(bricks, ["1.material < 2"]).material
        self.assertIn('\t"float   a7" [%2]\n', text)


class PairTest(unittest.TestCase):
    def text(self, parameters, count, literal=True):
        plain = {"count": settings(Value=["i", count])}
        band = brick("VireoTexFltBAndBrick", parameters, plain=plain)
        bricks = [brick("VireoRootBrick"), brick("VireoMatNullBrick"), band]
        return render(bricks, ["1.material < 2", "2.bumpmap < 3"], literal).material

    def test_values(self):
        parameters = {"offset1": value(0.25), "offset2": value(1, Locked=True), "tex2": value(3)}
        self.assertEqual(
            lines_of(self.text(parameters, 2), "Texture"),
            [
                '\t"float   amount" [0]',
                '\t"float   tex1" [0]',
                '\t"float   tex2" [3]',
                '\t"float   offsets" [0.25 1]',
            ],
        )
        self.assertIn("offsets\" [0.25 1]\n", self.text(parameters, 2, literal=False))

    def test_count_is_clamped(self):
        self.assertIn("offsets\" [0 0 0 0 0 0 0 0 0 0]\n", self.text({}, 11))
        self.assertNotIn("offsets", self.text({}, -1))


class CommandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def run_script(self, *arguments):
        command = [sys.executable, str(SCRIPT), *(str(argument) for argument in arguments)]
        return subprocess.run(command, capture_output=True)

    def save(self, name, bricks, links=()):
        path = self.folder / name
        path.write_text(json.dumps(document(bricks, links)), encoding="utf-8")
        return path

    def test_export(self):
        path = self.save(
            "net.sskn",
            [brick("VireoRootBrick"), brick("VireoMatNullBrick")],
            ["1.material < 2"],
        )
        separator = "#---------------------------------------------------------------------\n"
        material = (
            "\n"
            'MakeNamedMaterial "Lm_material1"\n'
            '\t"float   bumpmap" [0]\n'
            '\t"string  type" ["null"]\n'
            "\n"
            'NamedMaterial "Lm_material1"\n'
        )
        result = self.run_script("export", path)
        self.assertEqual(result.returncode, 0)
        text = result.stdout.decode("utf-8")
        head = separator + "# Material Settings\n" + material + "\n\n"
        self.assertTrue(text.startswith(head + separator + "# Mesh Settings\n\t"))
        self.assertTrue(text.endswith('\t"string  subdivscheme" ["loop"]\n'))
        section = self.run_script("export", path, "--section", "material")
        self.assertEqual(section.stdout.decode("utf-8"), material)

    def test_failures(self):
        path = self.save("rootless.sskn", [brick("VireoMatNullBrick")])
        result = self.run_script("export", path)
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        self.assertIn(b"no root", result.stderr)
        self.assertEqual(self.run_script("export").returncode, 2)

    def test_examples(self):
        self.save("a.sskn", [brick("VireoRootBrick")])
        self.assertEqual(self.run_script("examples", self.folder).returncode, 0)
        self.assertIn("[0.1]", (self.folder / "a.txt").read_text(encoding="utf-8"))
        named = (self.folder / "a.placeholders.txt").read_text(encoding="utf-8")
        self.assertIn("$(LuxRender_Lm_002_dmscale)", named)

    def test_deep_chain(self):
        length = 5000
        bricks = [brick("VireoRootBrick"), brick("VireoMatNullBrick")]
        bricks += length * [brick("VireoTexFltAddBrick")]
        links = ["1.material < 2", "2.bumpmap < 3"]
        links += ["%d.tex1 < %d" % (i, i + 1) for i in range(3, length + 2)]
        result = self.run_script("export", self.save("deep.sskn", bricks, links))
        self.assertEqual(result.returncode, 0)
        text = result.stdout.decode("utf-8")
        self.assertEqual(text.count("\nTexture"), length)
        self.assertIn('Texture "Lm_texture%d"' % length, text[:200])


if __name__ == "__main__":
    unittest.main()
