#!/usr/bin/env python3
"""Checks of the generator's header-tool rules on small, hand-written facts.

Run: python3 Tools/Catalogue/test_generate_catalogue.py
"""

import json
import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import generate_catalogue as gen  # noqa: E402


def write_facts(folder, module, records):
    os.makedirs(os.path.join(folder, module), exist_ok=True)
    with open(os.path.join(folder, module, "Facts.jsonl"), "w", encoding="utf-8") as handle:
        for record in records:
            handle.write(json.dumps(record) + "\n")


class MinimalTables:
    """Only the minimal types these small facts need; the real tables name supers the facts here lack."""

    def __enter__(self):
        names = ("MINIMAL_CLASSES", "MINIMAL_INTERFACES", "MINIMAL_STRUCTS", "MINIMAL_ENUMS", "MINIMAL_DELEGATES")
        self.saved = {name: getattr(gen, name) for name in names}
        gen.MINIMAL_CLASSES = {"UBlueprintFunctionLibrary": gen.MINIMAL_CLASSES["UBlueprintFunctionLibrary"],
                               "AActor": ("Engine", "UObject", [], {})}
        gen.MINIMAL_INTERFACES = {}
        gen.MINIMAL_STRUCTS = {}
        gen.MINIMAL_ENUMS = {}
        gen.MINIMAL_DELEGATES = {}
        return self

    def __exit__(self, *exc):
        for name, value in self.saved.items():
            setattr(gen, name, value)
        return False


def build(records):
    with tempfile.TemporaryDirectory() as folder, MinimalTables():
        write_facts(folder, "Engine", records)
        catalogue = gen.Catalogue(folder)
        catalogue.load()
        builder = gen.Builder(catalogue)
        builder.build()
        return catalogue, builder


LIBRARY = {"kind": "class", "name": "TestLibrary", "cpp": "UTestLibrary", "path": "/Script/Engine.TestLibrary",
           "super": "BlueprintFunctionLibrary", "module": "Engine", "header": "T.h", "specifiers": [], "meta": {},
           "source": "test"}


def function(name, params, specifiers=("BlueprintCallable",), ret=None, static=True, const=False, meta=None):
    return {"kind": "function", "class": "TestLibrary", "name": name, "static": static, "const": const,
            "specifiers": list(specifiers), "category": "Test", "meta": meta or {}, "return": ret, "params": params}


def find_function(builder, name):
    for cls in builder.modules["Engine"]["classes"]:
        for fn in cls.get("functions", []):
            if fn["name"] == name:
                return fn
    raise AssertionError("no function " + name)


class DefaultValueTests(unittest.TestCase):
    CASES = [
        ("float", "2.f", "2.000000"),
        ("float", "1.e-4f", "0.000100"),
        ("double", "1.0", "1.000000"),
        ("float", "-1", "-1.000000"),
        ("int32", "324", "324"),
        ("bool", "true", "true"),
        ("FName", "NAME_None", "None"),
        ("FName", 'FName(TEXT("Regular"))', "Regular"),
        ("const FString&", 'FString(TEXT("Hello"))', "Hello"),
        ("const FString&", 'TEXT("")', ""),
        ("const FText", 'INVTEXT("Hello")', 'INVTEXT("Hello")'),
        ("UObject*", "nullptr", "None"),
        ("TSubclassOf<AActor>", "{}", "None"),
        ("FVector", "FVector::ZeroVector", ""),
        ("FVector", "FVector(1.f)", "1.000000,1.000000,1.000000"),
        ("FVector", "FVector(0.f,0.f,1.f)", "0.000000,0.000000,1.000000"),
        ("FRotator", "FRotator(-90, 0, 0)", "-90.000000,0.000000,0.000000"),
        ("FRotator", "FRotator::ZeroRotator", ""),
        ("FLinearColor", "FLinearColor(0.0f, 0.66f, 1.0f)", "(R=0.000000,G=0.660000,B=1.000000,A=1.000000)"),
        ("FLinearColor", "FLinearColor::Red", "(R=1.000000,G=0.000000,B=0.000000,A=1.000000)"),
        ("EDrawDebugTrace::Type", "EDrawDebugTrace::Type::None", "None"),
        ("ECollisionChannel", "ECC_Visibility", "ECC_Visibility"),
    ]

    def test_defaults_are_written_as_the_header_tool_writes_them(self):
        enums = [
            {"kind": "enum", "name": "EDrawDebugTrace", "path": "/Script/Engine.EDrawDebugTrace", "cppForm": "namespace",
             "underlying": "int", "specifiers": [], "meta": {}, "module": "Engine", "header": "T.h", "source": "t",
             "values": [{"name": "None"}, {"name": "ForOneFrame"}]},
            {"kind": "enum", "name": "ECollisionChannel", "path": "/Script/Engine.ECollisionChannel", "cppForm": "enum",
             "underlying": "int", "specifiers": [], "meta": {}, "module": "Engine", "header": "T.h", "source": "t",
             "values": [{"name": "ECC_WorldStatic"}, {"name": "ECC_Visibility"}]},
            {"kind": "struct", "name": "Vector", "cpp": "FVector", "path": "/Script/Engine.Vector", "module": "Engine",
             "header": "T.h", "specifiers": ["HasDefaults"], "meta": {}, "members": [], "source": "t"},
            {"kind": "struct", "name": "Rotator", "cpp": "FRotator", "path": "/Script/Engine.Rotator", "module": "Engine",
             "header": "T.h", "specifiers": [], "meta": {}, "members": [], "source": "t"},
            {"kind": "struct", "name": "LinearColor", "cpp": "FLinearColor", "path": "/Script/Engine.LinearColor",
             "module": "Engine", "header": "T.h", "specifiers": [], "meta": {}, "members": [], "source": "t"},
        ]
        records = [LIBRARY] + enums
        for index, (cpp_type, default, _expected) in enumerate(self.CASES):
            records.append(function("F%d" % index, [{"name": "P", "type": cpp_type, "default": default}]))
        catalogue, builder = build(records)
        self.assertEqual(catalogue.errors, [])
        for index, (cpp_type, default, expected) in enumerate(self.CASES):
            with self.subTest(cpp_type=cpp_type, default=default):
                self.assertEqual(find_function(builder, "F%d" % index)["meta"]["CPP_Default_P"], expected)

    def test_events_do_not_record_defaults(self):
        records = [LIBRARY, function("OnThing", [{"name": "Amount", "type": "float", "default": "1.f"}],
                                     specifiers=("BlueprintImplementableEvent",), static=False)]
        _catalogue, builder = build(records)
        self.assertNotIn("CPP_Default_Amount", find_function(builder, "OnThing").get("meta", {}))


class FlagTests(unittest.TestCase):
    def test_parameter_flags_follow_constness_and_references(self):
        params = [{"name": "Object", "type": "const UObject*"},
                  {"name": "Text", "type": "const FString&"},
                  {"name": "OutText", "type": "FString&", "out": True},
                  {"name": "Names", "type": "const TArray<FName>&"},
                  {"name": "Items", "type": "TArray<int32>&", "ref": True},
                  {"name": "Value", "type": "float"}]
        _catalogue, builder = build([LIBRARY, function("Run", params, ret="bool")])
        fn = find_function(builder, "Run")
        flags = {p["name"]: set(p["flags"]) for p in fn["params"]}
        self.assertEqual(flags["Object"] & {"ConstParm", "OutParm"}, {"ConstParm"})
        self.assertEqual(flags["Text"] & {"ConstParm", "OutParm", "ReferenceParm"}, set())
        self.assertEqual(flags["OutText"] & {"ConstParm", "OutParm", "ReferenceParm"}, {"OutParm"})
        self.assertEqual(flags["Names"] & {"ConstParm", "OutParm", "ReferenceParm"}, {"ConstParm", "OutParm", "ReferenceParm"})
        self.assertEqual(flags["Items"] & {"ConstParm", "OutParm", "ReferenceParm"}, {"OutParm", "ReferenceParm"})
        self.assertEqual(flags["ReturnValue"] & {"OutParm", "ReturnParm"}, {"OutParm", "ReturnParm"})
        self.assertEqual([p["name"] for p in fn["params"]][-1], "ReturnValue")
        self.assertIn("HasOutParms", fn["flags"])

    def test_function_flags(self):
        records = [LIBRARY,
                   function("Pure", [{"name": "A", "type": "int32"}], specifiers=("BlueprintPure",), ret="int32"),
                   function("ConstGetter", [], static=False, const=True, ret="int32"),
                   function("ConstImpure", [], specifiers=("BlueprintPure=false",), static=False, const=True, ret="int32"),
                   function("Event", [], specifiers=("BlueprintImplementableEvent",), static=False),
                   function("NativeEvent", [], specifiers=("BlueprintNativeEvent", "BlueprintCallable"), static=False)]
        _catalogue, builder = build(records)
        self.assertTrue({"BlueprintCallable", "BlueprintPure", "Static", "Final", "Native"} <= set(find_function(builder, "Pure")["flags"]))
        self.assertTrue({"BlueprintPure", "Const"} <= set(find_function(builder, "ConstGetter")["flags"]))
        self.assertNotIn("BlueprintPure", find_function(builder, "ConstImpure")["flags"])
        event = set(find_function(builder, "Event")["flags"])
        self.assertTrue({"Event", "BlueprintEvent"} <= event)
        self.assertFalse({"Native", "Final"} & event)
        self.assertTrue({"Event", "BlueprintEvent", "Native", "BlueprintCallable"} <= set(find_function(builder, "NativeEvent")["flags"]))

    def test_advanced_display_by_count_and_by_name(self):
        params = [{"name": n, "type": "int32"} for n in ("A", "B", "C")]
        records = [LIBRARY, function("ByCount", params, meta={"AdvancedDisplay": "1"}),
                   function("ByName", params, meta={"AdvancedDisplay": "c, a"})]
        _catalogue, builder = build(records)
        by_count = {p["name"]: "AdvancedDisplay" in p["flags"] for p in find_function(builder, "ByCount")["params"]}
        by_name = {p["name"]: "AdvancedDisplay" in p["flags"] for p in find_function(builder, "ByName")["params"]}
        self.assertEqual(by_count, {"A": False, "B": True, "C": True})
        self.assertEqual(by_name, {"A": True, "B": False, "C": True})


class TypeTests(unittest.TestCase):
    def test_unknown_types_are_reported(self):
        catalogue, _builder = build([LIBRARY, function("Odd", [{"name": "P", "type": "FNoSuchStruct"}])])
        self.assertTrue(any("unknown type FNoSuchStruct" in e for e in catalogue.errors), catalogue.errors)

    def test_enum_expressions(self):
        known = {"X": 1, "Y": 2}
        self.assertEqual(gen._eval_enum_expression("1 << 3", known, "E"), 8)
        self.assertEqual(gen._eval_enum_expression("X | Y", known, "E"), 3)
        self.assertEqual(gen._eval_enum_expression("0x10", known, "E"), 16)
        self.assertEqual(gen._eval_enum_expression("-1", known, "E"), -1)
        with self.assertRaises(gen.CatalogueError):
            gen._eval_enum_expression("Z + 1", known, "E")


if __name__ == "__main__":
    unittest.main()
