"""What can be known, without a macOS, of the recipe for its application: usage check_bundle.py SOURCE BUILD TRADEMODULE"""
import json
import pathlib
import plistlib
import re
import subprocess
import sys
import unittest

source, build = (pathlib.Path(folder) for folder in sys.argv[1:3])
trademodule = sys.argv.pop()
del sys.argv[1:]
recipe = source / "packaging/macos"


def property_list(file, **values):
    text = (recipe / file).read_text(encoding="utf-8")
    return plistlib.loads(re.sub("@([A-Z_]+)@", lambda name: values[name[1]], text).encode())


class Bundle(unittest.TestCase):
    def test_starts_the_terminal(self):
        program = property_list("Info.plist.in", PROJECT_VERSION="1.2.3")["CFBundleExecutable"]
        self.assertTrue((build / "bin" / program).exists(), program)

    def test_is_known_by_the_name_that_the_terminal_has_on_other_systems(self):
        metainfo = (source / "terminal/desktop/tradeterminal.metainfo.xml.in").read_text(encoding="utf-8")
        name = property_list("Info.plist.in", PROJECT_VERSION="1.2.3")["CFBundleIdentifier"]
        self.assertIn(f"<id>{name}</id>", metainfo)

    def test_tells_the_version(self):
        told = property_list("Info.plist.in", PROJECT_VERSION="1.2.3")
        self.assertEqual([told["CFBundleShortVersionString"], told["CFBundleVersion"]], ["1.2.3", "1.2.3"])

    def test_is_installed_by_the_preset_that_its_script_builds(self):
        presets = json.loads((source / "CMakePresets.json").read_text(encoding="utf-8"))["configurePresets"]
        bundle = next(preset for preset in presets if preset["name"] == "bundle")
        self.assertEqual(bundle["cacheVariables"], {"TRADECHART_MACOS_BUNDLE": "ON"})
        self.assertIn("configure_and_build bundle", (recipe / "make-bundle").read_text(encoding="utf-8"))
        subprocess.run(["bash", "-n", str(recipe / "make-bundle")], check=True)

    def test_serves_by_a_command_line_that_the_module_takes(self):
        arguments = property_list("org.tradechartobject.trademodule.plist")["ProgramArguments"]
        self.assertTrue(arguments[0].endswith(".app/Contents/MacOS/trademodule"), arguments[0])
        # no ledger is there, which the module says only when it has understood the rest
        ran = subprocess.run([trademodule, "--lang", "en"] + arguments[1:5] + ["account"], capture_output=True, text=True)
        self.assertIn(arguments[4], ran.stderr)
        known = subprocess.run([trademodule, "--lang", "en", "serve", "--help"], capture_output=True, text=True).stdout
        for option in [word for word in arguments[5:] if word.startswith("--")]:
            self.assertIn(option, known)

    def test_is_begun_again_like_the_unit_of_other_systems(self):
        settings = property_list("org.tradechartobject.trademodule.plist")
        self.assertEqual(settings["Label"], "org.tradechartobject.trademodule")
        self.assertEqual(settings["KeepAlive"], {"SuccessfulExit": False})
        self.assertEqual(settings["Umask"], 0o077)


if __name__ == "__main__":
    unittest.main()
