#pragma once

// Flags of the object system with the engine's values, the markers the engine's header tool reads
// (empty here), and the macros that declare and register a C++ class with the reflection system.
// See docs/ARCHITECTURE.md, "Objects and reflection", for how a class registers itself.

#include "CoreTypes.h"
#include "Misc/EnumClassFlags.h"
#include "UObject/Script.h"
#include "UObject/PropertyPortFlags.h"

#include <cstddef>

class UObject;
class UClass;
class FProperty;
class FObjectInitializer;

/** Flags for loading objects, passed to LoadObject, LoadPackage and related functions. */
enum ELoadFlags
{
	LOAD_None = 0x00000000,
	LOAD_Async = 0x00000001,
	LOAD_NoWarn = 0x00000002,
	LOAD_EditorOnly = 0x00000004,
	LOAD_ResolvingDeferredExports = 0x00000008,
	LOAD_Verify = 0x00000010,
	LOAD_NoVerify = 0x00000080,
	LOAD_IsVerifying = 0x00000100,
	LOAD_SkipLoadImportedPackages = 0x00000200,
	LOAD_DisableDependencyPreloading = 0x00001000,
	LOAD_Quiet = 0x00002000,
	LOAD_FindIfFail = 0x00004000,
	LOAD_MemoryReader = 0x00008000,
	LOAD_NoRedirects = 0x00010000,
	LOAD_ForDiff = 0x00020000,
	LOAD_PackageForPIE = 0x00080000,
	LOAD_DeferDependencyLoads = 0x00100000,
	LOAD_ForFileDiff = 0x00200000,
	LOAD_DisableCompileOnLoad = 0x00400000,
	LOAD_DisableEngineVersionChecks = 0x00800000,
};

/** Flags for saving packages, passed to UPackage::SavePackage. */
enum ESaveFlags
{
	SAVE_None = 0x00000000,
	SAVE_NoError = 0x00000001,
	SAVE_FromAutosave = 0x00000002,
	SAVE_KeepDirty = 0x00000004,
	SAVE_Async = 0x00000010,
	SAVE_Unversioned_Native = 0x00000020,
	SAVE_CutdownPackage = 0x00000040,
	SAVE_KeepEditorOnlyCookedPackages = 0x00000080,
	SAVE_Concurrent = 0x00000100,
	SAVE_BulkDataByReference = 0x00002000,
	SAVE_Unversioned_Properties = 0x00004000,
	SAVE_Optional = 0x00008000,
	SAVE_AllowTimeout = 0x00010000,
	SAVE_RehydratePayloads = 0x00020000,
	SAVE_CookSoftPackageReferences = 0x00040000,
	SAVE_Unversioned = SAVE_Unversioned_Native | SAVE_Unversioned_Properties,
};

/** Package flags, passed to UPackage::SetPackageFlags and related functions. */
enum EPackageFlags
{
	PKG_None = 0x00000000,
	PKG_NewlyCreated = 0x00000001,
	PKG_ClientOptional = 0x00000002,
	PKG_ServerSideOnly = 0x00000004,
	PKG_CompiledIn = 0x00000010,
	PKG_ForDiffing = 0x00000020,
	PKG_EditorOnly = 0x00000040,
	PKG_Developer = 0x00000080,
	PKG_UncookedOnly = 0x00000100,
	PKG_Cooked = 0x00000200,
	PKG_ContainsNoAsset = 0x00000400,
	PKG_NotExternallyReferenceable = 0x00000800,
	PKG_AccessSpecifierEpicInternal = 0x00001000,
	PKG_UnversionedProperties = 0x00002000,
	PKG_ContainsMapData = 0x00004000,
	PKG_IsSaving = 0x00008000,
	PKG_Compiling = 0x00010000,
	PKG_ContainsMap = 0x00020000,
	PKG_RequiresLocalizationGather = 0x00040000,
	PKG_LoadUncooked = 0x00080000,
	PKG_PlayInEditor = 0x00100000,
	PKG_ContainsScript = 0x00200000,
	PKG_DisallowExport = 0x00400000,
	PKG_CookGenerated = 0x08000000,
	PKG_DynamicImports = 0x10000000,
	PKG_RuntimeGenerated = 0x20000000,
	PKG_ReloadingForCooker = 0x40000000,
	PKG_FilterEditorOnly = 0x80000000,
};

ENUM_CLASS_FLAGS(EPackageFlags)

/** Flags that never reach a package file. */
#define PKG_TransientFlags ((EPackageFlags)(PKG_NewlyCreated | PKG_IsSaving | PKG_ReloadingForCooker))
/** A package with any of these exists only in memory. */
#define PKG_InMemoryOnly ((EPackageFlags)(PKG_CompiledIn | PKG_NewlyCreated))

// Tags selecting special constructors.
enum EStaticConstructor { EC_StaticConstructor };
enum EInternal { EC_InternalUseOnlyConstructor };
enum ECppProperty { EC_CppProperty };

/** Placeholder for a module API macro where a class needs none. */
#define NO_API

/** Flags describing a class, with the engine's values. */
enum EClassFlags
{
	CLASS_None = 0x00000000u,
	CLASS_Abstract = 0x00000001u,
	CLASS_DefaultConfig = 0x00000002u,
	CLASS_Config = 0x00000004u,
	CLASS_Transient = 0x00000008u,
	CLASS_Optional = 0x00000010u,
	CLASS_MatchedSerializers = 0x00000020u,
	CLASS_ProjectUserConfig = 0x00000040u,
	CLASS_Native = 0x00000080u,
	CLASS_NotPlaceable = 0x00000200u,
	CLASS_PerObjectConfig = 0x00000400u,
	CLASS_ReplicationDataIsSetUp = 0x00000800u,
	CLASS_EditInlineNew = 0x00001000u,
	CLASS_CollapseCategories = 0x00002000u,
	CLASS_Interface = 0x00004000u,
	CLASS_PerPlatformConfig = 0x00008000u,
	CLASS_Const = 0x00010000u,
	CLASS_NeedsDeferredDependencyLoading = 0x00020000u,
	CLASS_CompiledFromBlueprint = 0x00040000u,
	CLASS_MinimalAPI = 0x00080000u,
	CLASS_RequiredAPI = 0x00100000u,
	CLASS_DefaultToInstanced = 0x00200000u,
	CLASS_TokenStreamAssembled = 0x00400000u,
	CLASS_HasInstancedReference = 0x00800000u,
	CLASS_Hidden = 0x01000000u,
	CLASS_Deprecated = 0x02000000u,
	CLASS_HideDropDown = 0x04000000u,
	CLASS_GlobalUserConfig = 0x08000000u,
	CLASS_Intrinsic = 0x10000000u,
	CLASS_Constructed = 0x20000000u,
	CLASS_ConfigDoNotCheckDefaults = 0x40000000u,
	CLASS_NewerVersionExists = 0x80000000u,
};

ENUM_CLASS_FLAGS(EClassFlags)

/** Flags a class inherits from its super class. */
#define CLASS_Inherit ((EClassFlags)(CLASS_Transient | CLASS_Optional | CLASS_DefaultConfig | CLASS_Config | CLASS_PerObjectConfig | CLASS_ConfigDoNotCheckDefaults | CLASS_NotPlaceable \
	| CLASS_Const | CLASS_HasInstancedReference | CLASS_Deprecated | CLASS_DefaultToInstanced | CLASS_GlobalUserConfig | CLASS_ProjectUserConfig | CLASS_PerPlatformConfig | CLASS_NeedsDeferredDependencyLoading))
#define CLASS_RecompilerClear ((EClassFlags)(CLASS_Inherit | CLASS_Abstract | CLASS_Native | CLASS_Intrinsic | CLASS_TokenStreamAssembled))
#define CLASS_ShouldNeverBeLoaded ((EClassFlags)(CLASS_Native | CLASS_Optional | CLASS_Intrinsic | CLASS_TokenStreamAssembled))
/** Flags a script (Blueprint) class inherits. */
#define CLASS_ScriptInherit ((EClassFlags)(CLASS_Inherit | CLASS_EditInlineNew | CLASS_CollapseCategories))
#define CLASS_AllFlags ((EClassFlags)0xFFFFFFFFu)

/** Flags for quick casts along the class chain; every class inherits its super class's. */
enum EClassCastFlags : uint64
{
	CASTCLASS_None = 0x0000000000000000,
	CASTCLASS_UField = 0x0000000000000001,
	CASTCLASS_FInt8Property = 0x0000000000000002,
	CASTCLASS_UEnum = 0x0000000000000004,
	CASTCLASS_UStruct = 0x0000000000000008,
	CASTCLASS_UScriptStruct = 0x0000000000000010,
	CASTCLASS_UClass = 0x0000000000000020,
	CASTCLASS_FByteProperty = 0x0000000000000040,
	CASTCLASS_FIntProperty = 0x0000000000000080,
	CASTCLASS_FFloatProperty = 0x0000000000000100,
	CASTCLASS_FUInt64Property = 0x0000000000000200,
	CASTCLASS_FClassProperty = 0x0000000000000400,
	CASTCLASS_FUInt32Property = 0x0000000000000800,
	CASTCLASS_FInterfaceProperty = 0x0000000000001000,
	CASTCLASS_FNameProperty = 0x0000000000002000,
	CASTCLASS_FStrProperty = 0x0000000000004000,
	CASTCLASS_FProperty = 0x0000000000008000,
	CASTCLASS_FObjectProperty = 0x0000000000010000,
	CASTCLASS_FBoolProperty = 0x0000000000020000,
	CASTCLASS_FUInt16Property = 0x0000000000040000,
	CASTCLASS_UFunction = 0x0000000000080000,
	CASTCLASS_FStructProperty = 0x0000000000100000,
	CASTCLASS_FArrayProperty = 0x0000000000200000,
	CASTCLASS_FInt64Property = 0x0000000000400000,
	CASTCLASS_FDelegateProperty = 0x0000000000800000,
	CASTCLASS_FNumericProperty = 0x0000000001000000,
	CASTCLASS_FMulticastDelegateProperty = 0x0000000002000000,
	CASTCLASS_FObjectPropertyBase = 0x0000000004000000,
	CASTCLASS_FWeakObjectProperty = 0x0000000008000000,
	CASTCLASS_FLazyObjectProperty = 0x0000000010000000,
	CASTCLASS_FSoftObjectProperty = 0x0000000020000000,
	CASTCLASS_FTextProperty = 0x0000000040000000,
	CASTCLASS_FInt16Property = 0x0000000080000000,
	CASTCLASS_FDoubleProperty = 0x0000000100000000,
	CASTCLASS_FSoftClassProperty = 0x0000000200000000,
	CASTCLASS_UPackage = 0x0000000400000000,
	CASTCLASS_ULevel = 0x0000000800000000,
	CASTCLASS_AActor = 0x0000001000000000,
	CASTCLASS_APlayerController = 0x0000002000000000,
	CASTCLASS_APawn = 0x0000004000000000,
	CASTCLASS_USceneComponent = 0x0000008000000000,
	CASTCLASS_UPrimitiveComponent = 0x0000010000000000,
	CASTCLASS_USkinnedMeshComponent = 0x0000020000000000,
	CASTCLASS_USkeletalMeshComponent = 0x0000040000000000,
	CASTCLASS_UBlueprint = 0x0000080000000000,
	CASTCLASS_UDelegateFunction = 0x0000100000000000,
	CASTCLASS_UStaticMeshComponent = 0x0000200000000000,
	CASTCLASS_FMapProperty = 0x0000400000000000,
	CASTCLASS_FSetProperty = 0x0000800000000000,
	CASTCLASS_FEnumProperty = 0x0001000000000000,
	CASTCLASS_USparseDelegateFunction = 0x0002000000000000,
	CASTCLASS_FMulticastInlineDelegateProperty = 0x0004000000000000,
	CASTCLASS_FMulticastSparseDelegateProperty = 0x0008000000000000,
	CASTCLASS_FFieldPathProperty = 0x0010000000000000,
	CASTCLASS_FLargeWorldCoordinatesRealProperty = 0x0080000000000000,
	CASTCLASS_FOptionalProperty = 0x0100000000000000,
	CASTCLASS_FVValueProperty = 0x0200000000000000,
	CASTCLASS_FVRestValueProperty = 0x0400000000000000,
	CASTCLASS_FVerseStringProperty = 0x0800000000000000,
	CASTCLASS_FUtf8StrProperty = 0x1000000000000000,
	CASTCLASS_FAnsiStrProperty = 0x2000000000000000,
	CASTCLASS_FVCellProperty = 0x4000000000000000,
};

#define CASTCLASS_AllFlags ((EClassCastFlags)0xFFFFFFFFFFFFFFFF)

ENUM_CLASS_FLAGS(EClassCastFlags)

/** Flags of a property, with the engine's 64-bit values. */
enum EPropertyFlags : uint64
{
	CPF_None = 0,

	CPF_Edit = 0x0000000000000001,
	CPF_ConstParm = 0x0000000000000002,
	CPF_BlueprintVisible = 0x0000000000000004,
	CPF_ExportObject = 0x0000000000000008,
	CPF_BlueprintReadOnly = 0x0000000000000010,
	CPF_Net = 0x0000000000000020,
	CPF_EditFixedSize = 0x0000000000000040,
	CPF_Parm = 0x0000000000000080,
	CPF_OutParm = 0x0000000000000100,
	CPF_ZeroConstructor = 0x0000000000000200,
	CPF_ReturnParm = 0x0000000000000400,
	CPF_DisableEditOnTemplate = 0x0000000000000800,
	CPF_NonNullable = 0x0000000000001000,
	CPF_Transient = 0x0000000000002000,
	CPF_Config = 0x0000000000004000,
	CPF_RequiredParm = 0x0000000000008000,
	CPF_DisableEditOnInstance = 0x0000000000010000,
	CPF_EditConst = 0x0000000000020000,
	CPF_GlobalConfig = 0x0000000000040000,
	CPF_InstancedReference = 0x0000000000080000,
	CPF_ExperimentalExternalObjects = 0x0000000000100000,
	CPF_DuplicateTransient = 0x0000000000200000,
	CPF_SaveGame = 0x0000000001000000,
	CPF_NoClear = 0x0000000002000000,
	CPF_Virtual = 0x0000000004000000,
	CPF_ReferenceParm = 0x0000000008000000,
	CPF_BlueprintAssignable = 0x0000000010000000,
	CPF_Deprecated = 0x0000000020000000,
	CPF_IsPlainOldData = 0x0000000040000000,
	CPF_RepSkip = 0x0000000080000000,
	CPF_RepNotify = 0x0000000100000000,
	CPF_Interp = 0x0000000200000000,
	CPF_NonTransactional = 0x0000000400000000,
	CPF_EditorOnly = 0x0000000800000000,
	CPF_NoDestructor = 0x0000001000000000,
	CPF_AutoWeak = 0x0000004000000000,
	CPF_ContainsInstancedReference = 0x0000008000000000,
	CPF_AssetRegistrySearchable = 0x0000010000000000,
	CPF_SimpleDisplay = 0x0000020000000000,
	CPF_AdvancedDisplay = 0x0000040000000000,
	CPF_Protected = 0x0000080000000000,
	CPF_BlueprintCallable = 0x0000100000000000,
	CPF_BlueprintAuthorityOnly = 0x0000200000000000,
	CPF_TextExportTransient = 0x0000400000000000,
	CPF_NonPIEDuplicateTransient = 0x0000800000000000,
	CPF_ExposeOnSpawn = 0x0001000000000000,
	CPF_PersistentInstance = 0x0002000000000000,
	CPF_UObjectWrapper = 0x0004000000000000,
	CPF_HasGetValueTypeHash = 0x0008000000000000,
	CPF_NativeAccessSpecifierPublic = 0x0010000000000000,
	CPF_NativeAccessSpecifierProtected = 0x0020000000000000,
	CPF_NativeAccessSpecifierPrivate = 0x0040000000000000,
	CPF_SkipSerialization = 0x0080000000000000,
	CPF_TObjectPtr = 0x0100000000000000,
	CPF_ExperimentalOverridableLogic = 0x0200000000000000,
	CPF_ExperimentalAlwaysOverriden = 0x0400000000000000,
	CPF_ExperimentalNeverOverriden = 0x0800000000000000,
	CPF_AllowSelfReference = 0x1000000000000000,
};

ENUM_CLASS_FLAGS(EPropertyFlags)

#define CPF_NativeAccessSpecifiers (CPF_NativeAccessSpecifierPublic | CPF_NativeAccessSpecifierProtected | CPF_NativeAccessSpecifierPrivate)
#define CPF_ParmFlags (CPF_Parm | CPF_OutParm | CPF_ReturnParm | CPF_RequiredParm | CPF_ReferenceParm | CPF_ConstParm)
#define CPF_PropagateToArrayInner (CPF_ExportObject | CPF_PersistentInstance | CPF_InstancedReference | CPF_ContainsInstancedReference | CPF_Config | CPF_EditConst | CPF_Deprecated | CPF_EditorOnly | CPF_AutoWeak | CPF_UObjectWrapper)
#define CPF_PropagateToOptionalInner (CPF_PropagateToArrayInner | CPF_Edit)
#define CPF_PropagateToMapValue (CPF_PropagateToArrayInner | CPF_Edit)
#define CPF_PropagateToMapKey (CPF_PropagateToArrayInner | CPF_Edit)
#define CPF_PropagateToSetElement (CPF_PropagateToArrayInner | CPF_Edit)
#define CPF_InterfaceClearMask (CPF_ExportObject | CPF_InstancedReference | CPF_ContainsInstancedReference)
#define CPF_DevelopmentAssets (CPF_EditorOnly)
/** Flags worked out from the property's type, never stored in data. */
#define CPF_ComputedFlags (CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash)
#define CPF_TObjectPtrWrapper (CPF_UObjectWrapper | CPF_TObjectPtr)
#define CPF_AllFlags ((EPropertyFlags)0xFFFFFFFFFFFFFFFF)

enum class EArrayPropertyFlags : uint8
{
	None,
	UsesMemoryImageAllocator
};
ENUM_CLASS_FLAGS(EArrayPropertyFlags)

enum class EMapPropertyFlags : uint8
{
	None,
	UsesMemoryImageAllocator
};
ENUM_CLASS_FLAGS(EMapPropertyFlags)

/** Flags describing an object instance, with the engine's values. */
enum EObjectFlags
{
	RF_NoFlags = 0x00000000,
	RF_Public = 0x00000001,
	RF_Standalone = 0x00000002,
	RF_MarkAsNative = 0x00000004,
	RF_Transactional = 0x00000008,
	RF_ClassDefaultObject = 0x00000010,
	RF_ArchetypeObject = 0x00000020,
	RF_Transient = 0x00000040,
	RF_MarkAsRootSet = 0x00000080,
	RF_TagGarbageTemp = 0x00000100,
	RF_NeedInitialization = 0x00000200,
	RF_NeedLoad = 0x00000400,
	RF_NeedPostLoad = 0x00001000,
	RF_NeedPostLoadSubobjects = 0x00002000,
	RF_NewerVersionExists = 0x00004000,
	RF_BeginDestroyed = 0x00008000,
	RF_FinishDestroyed = 0x00010000,
	RF_BeingRegenerated = 0x00020000,
	RF_DefaultSubObject = 0x00040000,
	RF_WasLoaded = 0x00080000,
	RF_TextExportTransient = 0x00100000,
	RF_LoadCompleted = 0x00200000,
	RF_InheritableComponentTemplate = 0x00400000,
	RF_DuplicateTransient = 0x00800000,
	RF_StrongRefOnFrame = 0x01000000,
	RF_NonPIEDuplicateTransient = 0x02000000,
	RF_ImmutableDefaultObject = 0x04000000,
	RF_WillBeLoaded = 0x08000000,
	RF_HasExternalPackage = 0x10000000,
	RF_MigratingAsset = 0x20000000,
	/** Garbage: the object is no longer valid (IsValid is false) and waits for CollectGarbage. */
	RF_MirroredGarbage = 0x40000000,
	RF_AllocatedInSharedPage = 0x80000000,
};

ENUM_CLASS_FLAGS(EObjectFlags)

#define RF_AllFlags ((EObjectFlags)0xffffffff)
/** Flags a package file keeps. */
#define RF_Load ((EObjectFlags)(RF_Public | RF_Standalone | RF_Transactional | RF_ClassDefaultObject | RF_ArchetypeObject | RF_DefaultSubObject | RF_TextExportTransient | RF_InheritableComponentTemplate | RF_DuplicateTransient | RF_NonPIEDuplicateTransient | RF_MigratingAsset))
/** Flags subobjects inherit from their owner. */
#define RF_PropagateToSubObjects ((EObjectFlags)(RF_Public | RF_ArchetypeObject | RF_Transactional | RF_Transient))

/** The flags as the engine's LexToString writes them ("RF_Public | RF_Transactional", or "RF_NoFlags"). */
COREUOBJECT_API class FString LexToString(EObjectFlags Flags);

/** Flags the object system keeps apart from the object (root set, garbage, native). */
enum class EInternalObjectFlags : int32
{
	None = 0,
	Remote = 0,
	RemoteReference = 0,
	Borrowed = 0,
	ReachabilityFlag0 = 1 << 14,
	ReachabilityFlag1 = 1 << 15,
	ReachabilityFlag2 = 1 << 16,
	AutoRTFMConstructionAborted = 1 << 17,
	LoaderImport = 1 << 20,
	Garbage = 1 << 21,
	AsyncLoadingPhase1 = 1 << 22,
	ReachableInCluster = 1 << 23,
	ClusterRoot = 1 << 24,
	Native = 1 << 25,
	Async = 1 << 26,
	AsyncLoadingPhase2 = 1 << 27,
	Unreachable = 1 << 28,
	RootSet = 1 << 30,
	PendingConstruction = static_cast<int32>(1u << 31),
};
ENUM_CLASS_FLAGS(EInternalObjectFlags)

/** Flags describing a UEnum. */
enum class EEnumFlags : uint8
{
	None,
	Flags = 0x00000001,
	NewerVersionExists = 0x00000002,
};
ENUM_CLASS_FLAGS(EEnumFlags)

/** Flags describing a struct, with the engine's values. */
enum EStructFlags
{
	STRUCT_NoFlags = 0x00000000,
	STRUCT_Native = 0x00000001,
	STRUCT_IdenticalNative = 0x00000002,
	STRUCT_HasInstancedReference = 0x00000004,
	STRUCT_NoExport = 0x00000008,
	STRUCT_Atomic = 0x00000010,
	STRUCT_Immutable = 0x00000020,
	STRUCT_AddStructReferencedObjects = 0x00000040,
	STRUCT_RequiredAPI = 0x00000200,
	STRUCT_NetSerializeNative = 0x00000400,
	STRUCT_SerializeNative = 0x00000800,
	STRUCT_CopyNative = 0x00001000,
	STRUCT_IsPlainOldData = 0x00002000,
	STRUCT_NoDestructor = 0x00004000,
	STRUCT_ZeroConstructor = 0x00008000,
	STRUCT_ExportTextItemNative = 0x00010000,
	STRUCT_ImportTextItemNative = 0x00020000,
	STRUCT_PostSerializeNative = 0x00040000,
	STRUCT_SerializeFromMismatchedTag = 0x00080000,
	STRUCT_NetDeltaSerializeNative = 0x00100000,
	STRUCT_PostScriptConstruct = 0x00200000,
	STRUCT_NetSharedSerialization = 0x00400000,
	STRUCT_Trashed = 0x00800000,
	STRUCT_NewerVersionExists = 0x01000000,
	STRUCT_CanEditChange = 0x02000000,

	STRUCT_Inherit = STRUCT_HasInstancedReference | STRUCT_Atomic,
	STRUCT_ComputedFlags = STRUCT_NetDeltaSerializeNative | STRUCT_NetSerializeNative | STRUCT_SerializeNative | STRUCT_PostSerializeNative | STRUCT_CopyNative
		| STRUCT_IsPlainOldData | STRUCT_NoDestructor | STRUCT_ZeroConstructor | STRUCT_IdenticalNative | STRUCT_AddStructReferencedObjects
		| STRUCT_ExportTextItemNative | STRUCT_ImportTextItemNative | STRUCT_SerializeFromMismatchedTag | STRUCT_PostScriptConstruct | STRUCT_NetSharedSerialization,
};
ENUM_CLASS_FLAGS(EStructFlags)

/** Options of UObject::Rename. */
typedef uint32 ERenameFlags;
#define REN_None (0x0000)
#define REN_ForceNoResetLoaders (0x0001)
/** Only check whether the rename would succeed. */
#define REN_Test (0x0002)
#define REN_DoNotDirty (0x0004)
#define REN_DontCreateRedirectors (0x0010)
#define REN_NonTransactional (0x0020)
#define REN_ForceGlobalUnique (0x0040)
#define REN_SkipGeneratedClasses (0x0080)

/** Prefix of class default object names. */
#define DEFAULT_OBJECT_PREFIX TEXT("Default__")

// Markers read by the engine's header tool. Headless classes register explicitly (DECLARE_CLASS and
// IMPLEMENT_CLASS below), so the markers expand to nothing and only document the source.
#define UPROPERTY(...)
#define UFUNCTION(...)
#define USTRUCT(...)
#define UMETA(...)
#define UPARAM(...)
#define UENUM(...)
#define UDELEGATE(...)
#define UCLASS(...)
#define UINTERFACE(...)
#define GENERATED_BODY(...)
#define GENERATED_BODY_LEGACY(...)
#define GENERATED_USTRUCT_BODY(...)
#define GENERATED_UCLASS_BODY(...)
#define GENERATED_UINTERFACE_BODY(...)
#define GENERATED_IINTERFACE_BODY(...)

namespace UE::CoreUObject::Private
{
	/**
	 * Byte offset of a data member, also in classes that are not standard-layout (every UObject class),
	 * where offsetof is not allowed. Only addresses are computed; nothing is read.
	 */
	template <typename T, typename M>
	int32 MemberOffset(M T::*Member)
	{
		alignas(T) unsigned char Storage[sizeof(T)];
		const T* Object = reinterpret_cast<const T*>(Storage);
		return static_cast<int32>(reinterpret_cast<const unsigned char*>(&(Object->*Member)) - Storage);
	}
}

/** Offset of the MultipleInheritenceParent part (a native interface) inside objects of Class. */
#define VTABLE_OFFSET(Class, MultipleInheritenceParent) (((PTRINT) static_cast<MultipleInheritenceParent*>((Class*)1)) - 1)

/** Byte offset of a member of a struct or class. */
#define STRUCT_OFFSET(struc, member) (::UE::CoreUObject::Private::MemberOffset(&struc::member))

namespace UE::CoreUObject::Private
{
	/** Builds and registers the UClass of a C++ class; see IMPLEMENT_CLASS. */
	COREUOBJECT_API void GetPrivateStaticClassBody(
		const TCHAR* PackageName,
		const TCHAR* Name,
		UClass*& ReturnClass,
		void (*RegisterNativeFunc)(UClass*),
		uint32 InSize,
		uint32 InAlignment,
		EClassFlags InClassFlags,
		EClassCastFlags InClassCastFlags,
		const TCHAR* InConfigName,
		void (*InClassConstructor)(const FObjectInitializer&),
		UClass* (*InSuperClassFn)(),
		UClass* (*InWithinClassFn)());

	/** Queues a class so it is registered (findable by name) before the first lookup. */
	struct COREUOBJECT_API FRegisterCompiledInClass
	{
		explicit FRegisterCompiledInClass(UClass* (*StaticClassFn)());
	};
}

/**
 * Declares a C++ class to the reflection system. Put it first in the class body, in place of the
 * engine's generated body. TPackage is the class's script package, e.g. TEXT("/Script/Engine").
 * The .cpp file implements the class with IMPLEMENT_CLASS.
 */
#define DECLARE_CLASS(TClass, TSuperClass, TStaticFlags, TStaticCastFlags, TPackage, TRequiredAPI) \
public: \
	using Super = TSuperClass; \
	using ThisClass = TClass; \
	static constexpr EClassFlags StaticClassFlags = EClassFlags(TStaticFlags); \
	static constexpr EClassCastFlags StaticClassCastFlags() { return EClassCastFlags(TStaticCastFlags); } \
	static const TCHAR* StaticPackage() { return TPackage; } \
	static const TCHAR* StaticConfigName() { return TEXT("Engine"); } \
	TRequiredAPI static UClass* GetPrivateStaticClass(); \
	static UClass* StaticClass() { return GetPrivateStaticClass(); } \
	/** Adds the class's reflected members; written by IMPLEMENT_CLASS. */ \
	static void StaticRegisterNativesFields(UClass* Class); \
	inline void* operator new(const size_t InSize, EInternal* InMem) { return (void*)InMem; } \
	inline void operator delete(void*, EInternal*) {} \
	inline void operator delete(void* InMem) { ::operator delete(InMem); } \
private:

/** A class whose instances always live inside an object of TWithinClass. */
#define DECLARE_WITHIN(TWithinClass) \
public: \
	using WithinClass = TWithinClass; \
	TWithinClass* GetOuter##TWithinClass() const { return (TWithinClass*)GetOuter(); } \
private:

/** An intrinsic class: declared directly in C++ (CLASS_Intrinsic), as the engine's core classes are. */
#define DECLARE_CASTED_CLASS_INTRINSIC_WITH_API(TClass, TSuperClass, TStaticFlags, TPackage, TStaticCastFlags, TRequiredAPI) \
	DECLARE_CLASS(TClass, TSuperClass, TStaticFlags | CLASS_Intrinsic, TStaticCastFlags, TPackage, TRequiredAPI)
#define DECLARE_CASTED_CLASS_INTRINSIC(TClass, TSuperClass, TStaticFlags, TPackage, TStaticCastFlags) \
	DECLARE_CASTED_CLASS_INTRINSIC_WITH_API(TClass, TSuperClass, TStaticFlags, TPackage, TStaticCastFlags, NO_API)
#define DECLARE_CLASS_INTRINSIC(TClass, TSuperClass, TStaticFlags, TPackage) \
	DECLARE_CASTED_CLASS_INTRINSIC_WITH_API(TClass, TSuperClass, TStaticFlags, TPackage, CASTCLASS_None, NO_API)

/**
 * Implements a class declared with DECLARE_CLASS. The optional rest is the class's reflection code,
 * run once when the class is built, with `Class` (the UClass being built) and `ThisClass` in scope;
 * it declares the reflected members, usually with UE_NATIVE_PROPERTY:
 *
 *     IMPLEMENT_CLASS(UMyNode,
 *         UE_NATIVE_PROPERTY(FIntProperty, NodePosX, CPF_None);
 *         UE_NATIVE_PROPERTY(FObjectProperty, Target, CPF_Edit, UObject::StaticClass());
 *     )
 *
 * Members keep the order they are written in. The class becomes findable by name before the first
 * object lookup, without anyone calling StaticClass().
 */
#define IMPLEMENT_CLASS(TClass, ...) \
	UClass* TClass::GetPrivateStaticClass() \
	{ \
		static UClass* PrivateStaticClass = nullptr; \
		if (!PrivateStaticClass) \
		{ \
			::UE::CoreUObject::Private::GetPrivateStaticClassBody( \
				StaticPackage(), \
				TEXT(#TClass) + 1, \
				PrivateStaticClass, \
				&TClass::StaticRegisterNativesFields, \
				sizeof(TClass), \
				alignof(TClass), \
				TClass::StaticClassFlags, \
				TClass::StaticClassCastFlags(), \
				TClass::StaticConfigName(), \
				&InternalConstructor<TClass>, \
				&TClass::Super::StaticClass, \
				&TClass::WithinClass::StaticClass); \
		} \
		return PrivateStaticClass; \
	} \
	void TClass::StaticRegisterNativesFields(UClass* Class) \
	{ \
		[[maybe_unused]] UStruct* const Owner = Class; \
		__VA_ARGS__ \
	} \
	static ::UE::CoreUObject::Private::FRegisterCompiledInClass Z_CompiledInDefer_##TClass(&TClass::StaticClass);

/** The engine's spelling for an intrinsic class implementation; InitCode as in IMPLEMENT_CLASS. */
#define IMPLEMENT_INTRINSIC_CLASS(TClass, TRequiredAPI, TSuperClass, TSuperRequiredAPI, TPackage, InitCode) \
	IMPLEMENT_CLASS(TClass, InitCode)
#define IMPLEMENT_CORE_INTRINSIC_CLASS(TClass, TSuperClass, InitCode) \
	IMPLEMENT_CLASS(TClass, InitCode)

/**
 * Inside IMPLEMENT_CLASS (or IMPLEMENT_SCRIPT_STRUCT) reflection code: reflects the member Member of
 * ThisClass as a PropertyClass property with the given flags. Extra arguments go to the property
 * constructor after the flags (the class of an object property, the struct of a struct property,
 * the enum of a byte property...). Evaluates to the new property, so container properties can be
 * given their inner property with AddCppProperty.
 */
#define UE_NATIVE_PROPERTY(PropertyClass, Member, PropertyFlags, ...) \
	::UE::CoreUObject::Private::AddNativeProperty(Owner, \
		new PropertyClass(Owner, TEXT(#Member), RF_Public | RF_MarkAsNative | RF_Transient, STRUCT_OFFSET(ThisClass, Member), (EPropertyFlags)(PropertyFlags) __VA_OPT__(,) __VA_ARGS__))
