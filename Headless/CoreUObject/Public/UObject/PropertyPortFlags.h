#pragma once

#include "CoreTypes.h"

/** Flags for text export and import of property values, with the engine's bit values. */
enum EPropertyPortFlags
{
	PPF_None = 0x00000000,
	/** Wrap strings and names in quotes; set for values nested in structs and containers. */
	PPF_Delimited = 0x00000002,
	PPF_CheckReferences = 0x00000004,
	PPF_ExportsNotFullyQualified = 0x00000008,
	PPF_AttemptNonQualifiedSearch = 0x00000010,
	PPF_RestrictImportTypes = 0x00000020,
	/** The text is a Blueprint pin default or similar text saved as import text. */
	PPF_SerializedAsImportText = 0x00000040,
	/** Export every struct member and map value, for an editor outside the engine (CSV and the like). */
	PPF_ExternalEditor = 0x00000080,
	PPF_SubobjectsOnly = 0x00000100,
	PPF_DeepComparison = 0x00000200,
	PPF_DeepCompareInstances = 0x00000400,
	PPF_Copy = 0x00000800,
	PPF_Duplicate = 0x00001000,
	/** Objects export as their bare path, without the class. */
	PPF_SimpleObjectText = 0x00002000,
	PPF_ParsingDefaultProperties = 0x00008000,
	PPF_IncludeTransient = 0x00020000,
	PPF_DeltaComparison = 0x00040000,
	PPF_PropertyWindow = 0x00080000,
	PPF_DebugDump = 0x00200000,
	PPF_DuplicateForPIE = 0x00400000,
	PPF_SeparateDeclare = 0x00800000,
	PPF_SeparateDefine = 0x01000000,
	/** A readable form for watching values: containers as "[i] value" lines. */
	PPF_BlueprintDebugView = 0x02000000,
	PPF_ConsoleVariable = 0x04000000,
	PPF_UseDeprecatedProperties = 0x08000000,
	PPF_ExportCpp = 0x10000000,
	PPF_ForceTaggedSerialization = 0x20000000,
	PPF_DuplicateVerbatim = 0x40000000,
};
