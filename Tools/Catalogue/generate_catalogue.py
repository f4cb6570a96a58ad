#!/usr/bin/env python3
"""Build the engine catalogue (Headless/Catalogue/Data/<Module>.json) from reflection facts.

The facts are JSON Lines transcribed from the engine's headers: C++ types as written,
specifiers, metadata and default values as they appear in the source. The catalogue is
what the engine's header tool would have made of them: every parameter and property gets
an explicit kind, the path of the type it names, and the CPF_ flags; every function gets
its FUNC_ flags; parameter defaults become "CPP_Default_<Param>" metadata in the text form
the header tool writes. The loader (Headless/Catalogue/Private) turns the result into
reflection objects without knowing anything about C++ spellings.

Usage: generate_catalogue.py [FACTS_DIR] [--out DIR] [--check]
Only the Python 3 standard library is used. Output is deterministic.
"""

import argparse
import json
import os
import re
import sys

FORMAT_NAME = "calvorn-catalogue"
FORMAT_VERSION = 1

# Modules are written (and loaded) in this order; a module's types may only refer to
# types of its own module or of modules listed before it, except through paths.
MODULE_ORDER = [
    "CoreUObject", "InputCore", "SlateCore", "Slate", "ApplicationCore", "PhysicsCore",
    "FieldNotification", "Engine", "ClothingSystemRuntimeInterface", "GameplayTasks",
    "NavigationSystem", "MovieScene", "AIModule", "UMG",
]

# --------------------------------------------------------------------------------------
# Types the facts refer to but do not describe. Each entry was checked against the engine
# sources (class declarations and their module folders); only what is needed to place the
# type in the hierarchy is recorded, and every one is flagged "minimal" in the output.
# --------------------------------------------------------------------------------------

# Classes that CoreUObject registers from C++. The catalogue only adds metadata to them.
CORE_NATIVE_CLASSES = {
    "UObject": ("Object", None),
    "UField": ("Field", "UObject"),
    "UStruct": ("Struct", "UField"),
    "UClass": ("Class", "UStruct"),
    "UScriptStruct": ("ScriptStruct", "UStruct"),
    "UFunction": ("Function", "UStruct"),
    "UEnum": ("Enum", "UField"),
    "UPackage": ("Package", "UObject"),
    "UInterface": ("Interface", "UObject"),
}

# Reflected functions of the CoreUObject classes above (NoExportTypes.h declares them for the header tool).
CORE_NATIVE_FUNCTIONS = {
    "UObject": [
        {"kind": "function", "class": "Object", "name": "ExecuteUbergraph", "static": False, "const": False,
         "specifiers": ["BlueprintImplementableEvent"], "category": None,
         "meta": {"BlueprintInternalUseOnly": "true"}, "return": None,
         "params": [{"name": "EntryPoint", "type": "int32"}]},
    ],
}

# cpp name -> (module, super cpp name, extra class flags, metadata)
MINIMAL_CLASSES = {
    # Engine: framework and assets
    "UBlueprintFunctionLibrary": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "AInfo": ("Engine", "AActor", ["Abstract", "MinimalAPI"], {}),
    "UMeshComponent": ("Engine", "UPrimitiveComponent", ["Abstract", "MinimalAPI"], {}),
    "USkinnedMeshComponent": ("Engine", "UMeshComponent", ["Abstract", "MinimalAPI"], {}),
    "UWorld": ("Engine", "UObject", ["MinimalAPI"], {}),
    "ULevel": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UPlayer": ("Engine", "UObject", ["MinimalAPI"], {}),
    "ULocalPlayer": ("Engine", "UPlayer", ["MinimalAPI"], {}),
    "APlayerCameraManager": ("Engine", "AActor", ["MinimalAPI"], {}),
    "AHUD": ("Engine", "AActor", ["MinimalAPI"], {}),
    "AGameSession": ("Engine", "AInfo", ["MinimalAPI"], {}),
    "AServerStatReplicator": ("Engine", "AInfo", ["MinimalAPI"], {}),
    "ADefaultPawn": ("Engine", "APawn", ["MinimalAPI"], {}),
    "ASpectatorPawn": ("Engine", "ADefaultPawn", ["MinimalAPI"], {}),
    "ABrush": ("Engine", "AActor", ["MinimalAPI"], {}),
    "AVolume": ("Engine", "ABrush", ["MinimalAPI"], {}),
    "APhysicsVolume": ("Engine", "AVolume", ["MinimalAPI"], {}),
    "ACameraActor": ("Engine", "AActor", ["MinimalAPI"], {}),
    "ASceneCapture": ("Engine", "AActor", ["Abstract", "MinimalAPI"], {}),
    "ASceneCapture2D": ("Engine", "ASceneCapture", ["MinimalAPI"], {}),
    "UCheatManager": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UPlayerInput": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UInputComponent": ("Engine", "UActorComponent", ["MinimalAPI"], {}),
    "UStreamableRenderAsset": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UStaticMesh": ("Engine", "UStreamableRenderAsset", ["MinimalAPI"], {}),
    "USkinnedAsset": ("Engine", "UStreamableRenderAsset", ["Abstract", "MinimalAPI"], {}),
    "USkeletalMesh": ("Engine", "USkinnedAsset", ["MinimalAPI"], {}),
    "UMaterialInterface": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UMaterialInstance": ("Engine", "UMaterialInterface", ["Abstract", "MinimalAPI"], {}),
    "UMaterialInstanceDynamic": ("Engine", "UMaterialInstance", ["MinimalAPI"], {}),
    "UTexture": ("Engine", "UStreamableRenderAsset", ["Abstract", "MinimalAPI"], {}),
    "UTexture2D": ("Engine", "UTexture", ["MinimalAPI"], {}),
    "UTexture2DDynamic": ("Engine", "UTexture", ["MinimalAPI"], {}),
    "USoundBase": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "USoundAttenuation": ("Engine", "UObject", ["MinimalAPI"], {}),
    "USoundClass": ("Engine", "UObject", ["MinimalAPI"], {}),
    "USoundConcurrency": ("Engine", "UObject", ["MinimalAPI"], {}),
    "USoundMix": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UDialogueWave": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UReverbEffect": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UInitialActiveSoundParams": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UAudioComponent": ("Engine", "USceneComponent", ["MinimalAPI"], {}),
    "UDecalComponent": ("Engine", "USceneComponent", ["MinimalAPI"], {}),
    "UFXSystemComponent": ("Engine", "UPrimitiveComponent", ["Abstract", "MinimalAPI"], {}),
    "UParticleSystemComponent": ("Engine", "UFXSystemComponent", ["MinimalAPI"], {}),
    "UFXSystemAsset": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UParticleSystem": ("Engine", "UFXSystemAsset", ["MinimalAPI"], {}),
    "UChildActorComponent": ("Engine", "USceneComponent", ["MinimalAPI"], {}),
    "USceneCaptureComponent": ("Engine", "USceneComponent", ["Abstract", "MinimalAPI"], {}),
    "USceneCaptureComponent2D": ("Engine", "USceneCaptureComponent", ["MinimalAPI"], {}),
    "UForceFeedbackComponent": ("Engine", "USceneComponent", ["MinimalAPI"], {}),
    "UCameraShakeSourceComponent": ("Engine", "USceneComponent", ["MinimalAPI"], {}),
    "UAnimationAsset": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UAnimSequenceBase": ("Engine", "UAnimationAsset", ["Abstract", "MinimalAPI"], {}),
    "UAnimCompositeBase": ("Engine", "UAnimSequenceBase", ["Abstract", "MinimalAPI"], {}),
    "UAnimMontage": ("Engine", "UAnimCompositeBase", ["MinimalAPI"], {}),
    "UAnimNotify": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UAnimNotifyState": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UBlendProfile": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UBlueprintCore": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UBlueprint": ("Engine", "UBlueprintCore", ["MinimalAPI"], {}),
    "UBlueprintGeneratedClass": ("Engine", "UClass", ["MinimalAPI"], {}),
    "UAnimBlueprintGeneratedClass": ("Engine", "UBlueprintGeneratedClass", ["MinimalAPI"], {}),
    "UCameraShakeBase": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UDamageType": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UDataAsset": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UDataTable": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UCurveTable": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UPhysicsAsset": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UForceFeedbackEffect": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UForceFeedbackAttenuation": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UHapticFeedbackEffect_Base": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "ULevelStreaming": ("Engine", "UObject", ["Abstract", "MinimalAPI"], {}),
    "USaveGame": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UTouchInterface": ("Engine", "UObject", ["MinimalAPI"], {}),
    "UFont": ("Engine", "UObject", ["MinimalAPI"], {}),
    "USlateBrushAsset": ("Engine", "UObject", ["MinimalAPI"], {}),
    "URuntimeVirtualTexture": ("Engine", "UObject", ["MinimalAPI"], {}),
    # Other runtime modules
    "UPhysicalMaterial": ("PhysicsCore", "UObject", [], {}),
    "UClothingSimulationInteractor": ("ClothingSystemRuntimeInterface", "UObject", ["Abstract"], {}),
    "UGameplayTaskResource": ("GameplayTasks", "UObject", ["Abstract"], {}),
    "UNavigationPath": ("NavigationSystem", "UObject", [], {}),
    "UNavigationQueryFilter": ("NavigationSystem", "UObject", [], {}),
    "UMovieSceneSignedObject": ("MovieScene", "UObject", [], {}),
    "UMovieSceneSequence": ("MovieScene", "UMovieSceneSignedObject", ["Abstract"], {}),
    "UBTNode": ("AIModule", "UObject", ["Abstract"], {}),
    "UBTTaskNode": ("AIModule", "UBTNode", ["Abstract"], {}),
    "UBehaviorTree": ("AIModule", "UObject", [], {}),
    "UBlackboardData": ("AIModule", "UDataAsset", [], {}),
    "UBrainComponent": ("AIModule", "UActorComponent", [], {}),
    "UBlackboardComponent": ("AIModule", "UActorComponent", [], {}),
    "UPathFollowingComponent": ("AIModule", "UActorComponent", [], {}),
    "UAIPerceptionComponent": ("AIModule", "UActorComponent", [], {}),
    "UAIAsyncTaskBlueprintProxy": ("AIModule", "UObject", [], {}),
    # UMG
    "UVisual": ("UMG", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UContentWidget": ("UMG", "UPanelWidget", ["Abstract", "MinimalAPI"], {}),
    "UUserWidgetExtension": ("UMG", "UObject", ["Abstract", "MinimalAPI"], {}),
    "UWidgetAnimation": ("UMG", "UMovieSceneSequence", ["MinimalAPI"], {}),
    "UUMGSequencePlayer": ("UMG", "UObject", ["MinimalAPI"], {}),
    "UDragDropOperation": ("UMG", "UObject", ["MinimalAPI"], {}),
    "UWidgetNavigation": ("UMG", "UObject", ["MinimalAPI"], {}),
    "UBorderSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UCanvasPanelSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UGridSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UHorizontalBoxSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UOverlaySlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "USafeZoneSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UScaleBoxSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UScrollBoxSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "USizeBoxSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UStackBoxSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UUniformGridSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UVerticalBoxSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UWidgetSwitcherSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
    "UWrapBoxSlot": ("UMG", "UPanelSlot", ["MinimalAPI"], {}),
}

# Interfaces (the U-side class of each UINTERFACE). Bases named in the facts that are plain
# C++ interfaces (FExec, IAsyncPhysicsStateProcessor) are not reflected and are dropped.
MINIMAL_INTERFACES = {
    "UNavAgentInterface": "Engine",
    "UNavRelevantInterface": "Engine",
    "UNavMovementInterface": "Engine",
    "URVOAvoidanceInterface": "Engine",
    "UNetworkPredictionInterface": "Engine",
    "UInterface_AssetUserData": "Engine",
    "UInterface_AsyncCompilation": "Engine",
    "UInterface_CollisionDataProvider": "Engine",
    "UPhysicsComponent": "Engine",
    "UVisualLoggerDebugSnapshotInterface": "Engine",
    "UWorldPartitionStreamingSourceProvider": "Engine",
    "UBlendableInterface": "Engine",
    "USlateTextureAtlasInterface": "SlateCore",
    "UNotifyFieldValueChanged": "FieldNotification",
    "UGameplayTaskOwnerInterface": "GameplayTasks",
    "UAIPerceptionListenerInterface": "AIModule",
    "UGenericTeamAgentInterface": "AIModule",
    "UNamedSlotInterface": "UMG",
}
NOT_REFLECTED_BASES = {"Exec", "AsyncPhysicsStateProcessor"}

# cpp name -> module, or (module, super cpp name, [(member type, member name)]) for the few whose
# layout is part of their public contract. The others have no members: a tool can name them,
# pass them around and compare them, but not look inside.
MINIMAL_STRUCTS = {
    "FTopLevelAssetPath": ("CoreUObject", None, [("FName", "PackageName"), ("FName", "AssetName")]),
    "FSoftObjectPath": ("CoreUObject", None, [("FTopLevelAssetPath", "AssetPath"), ("FString", "SubPathString")]),
    "FSoftClassPath": ("CoreUObject", "FSoftObjectPath", []),
    "FPrimaryAssetType": ("CoreUObject", None, [("FName", "Name")]),
    "FPrimaryAssetId": ("CoreUObject", None, [("FPrimaryAssetType", "PrimaryAssetType"), ("FName", "PrimaryAssetName")]),
    "FARFilter": "CoreUObject",
    "FKey": ("InputCore", None, [("FName", "KeyName")]),
    "FInputChord": "Slate", "FAnchors": "Slate",
    "FGeometry": "SlateCore", "FPointerEvent": "SlateCore", "FKeyEvent": "SlateCore",
    "FInputEvent": "SlateCore", "FCharacterEvent": "SlateCore", "FAnalogInputEvent": "SlateCore",
    "FFocusEvent": "SlateCore", "FMotionEvent": "SlateCore", "FNavigationEvent": "SlateCore",
    "FSlateBrush": "SlateCore", "FSlateColor": "SlateCore", "FSlateFontInfo": "SlateCore",
    "FMargin": ("SlateCore", None, [("float", "Left"), ("float", "Top"), ("float", "Right"), ("float", "Bottom")]),
    "FButtonStyle": "SlateCore", "FCheckBoxStyle": "SlateCore",
    "FEditableTextBoxStyle": "SlateCore", "FSliderStyle": "SlateCore",
    "FFieldNotificationId": ("FieldNotification", None, [("FName", "FieldName")]),
    "FTimerHandle": ("Engine", None, [("uint64", "Handle")]),
    "FLatentActionInfo": ("Engine", None, [("int32", "Linkage"), ("int32", "UUID"), ("FName", "ExecutionFunction"),
                                          ("UObject*", "CallbackTarget")]),
    "FBodyInstance": "Engine",
    "FPostProcessSettings": "Engine", "FMinimalViewInfo": "Engine", "FFindFloorResult": "Engine",
    "FNavAgentProperties": "Engine", "FNavAvoidanceMask": "Engine",
    "FVector_NetQuantize": ("Engine", "FVector", []), "FVector_NetQuantize10": ("Engine", "FVector", []),
    "FVector_NetQuantize100": ("Engine", "FVector", []), "FVector_NetQuantizeNormal": ("Engine", "FVector", []),
    "FCollisionProfileName": ("Engine", None, [("FName", "Name")]),
    "FConstraintInstanceAccessor": "Engine",
    "FPredictProjectilePathResult": "Engine", "FPredictProjectilePathParams": "Engine",
    "FBranchingPointNotifyPayload": "Engine", "FMontageBlendSettings": "Engine",
    "FAlphaBlendArgs": "Engine", "FMarkerSyncAnimPosition": "Engine", "FPoseSnapshot": "Engine",
    "FSingleAnimationPlayData": "Engine", "FRuntimeFloatCurve": "Engine",
    "FDialogueContext": "Engine", "FUniqueNetIdRepl": "Engine", "FActorInstanceHandle": "Engine",
    "FBodyInstanceAsyncPhysicsTickHandle": "Engine", "FStreamingSourceShape": "Engine",
    "FTableRowBase": "Engine",
    "FWidgetTransform": ("UMG", None, [("FVector2D", "Translation"), ("FVector2D", "Scale"), ("FVector2D", "Shear"),
                                       ("float", "Angle")]),
    "FWidgetAnimationHandle": "UMG",
    "FAIRequestID": ("AIModule", None, [("uint32", "RequestID")]),
}

# Enums the facts use without describing. Values are given where the engine's list is short
# and stable; the rest carry no entries and are flagged minimal.
# name -> (module, form, underlying, [values])
MINIMAL_ENUMS = {
    "ECheckBoxState": ("SlateCore", "EnumClass", "uint8", ["Unchecked", "Checked", "Undetermined"]),
    "EHorizontalAlignment": ("SlateCore", "Regular", "int",
                             ["HAlign_Fill", "HAlign_Left", "HAlign_Center", "HAlign_Right"]),
    "EOrientation": ("SlateCore", "Regular", "int", ["Orient_Horizontal", "Orient_Vertical"]),
    "ETextCommit": ("SlateCore", "Namespaced", "int", ["Default", "OnEnter", "OnUserMovedFocus", "OnCleared"]),
    "ETextJustify": ("Slate", "Namespaced", "int", ["Left", "Center", "Right", "InvariantLeft", "InvariantRight"]),
    "EUINavigation": ("SlateCore", "EnumClass", "uint8", []),
    "EUINavigationRule": ("SlateCore", "EnumClass", "uint8", []),
    "EUINavigationAction": ("SlateCore", "EnumClass", "uint8", []),
    "EButtonClickMethod": ("SlateCore", "Namespaced", "int", []),
    "EButtonTouchMethod": ("SlateCore", "Namespaced", "int", []),
    "EButtonPressMethod": ("SlateCore", "Namespaced", "int", []),
    "ETextFlowDirection": ("Slate", "EnumClass", "uint8", ["Auto", "LeftToRight", "RightToLeft", "Culture"]),
    "ETextShapingMethod": ("SlateCore", "EnumClass", "uint8", []),
    "ETextOverflowPolicy": ("SlateCore", "EnumClass", "uint8", []),
    "ETextTransformPolicy": ("Slate", "EnumClass", "uint8", []),
    "ETextWrappingPolicy": ("Slate", "EnumClass", "uint8", ["DefaultWrapping", "AllowPerCharacterWrapping"]),
    "EFlowDirectionPreference": ("SlateCore", "EnumClass", "uint8", []),
    "EWidgetClipping": ("SlateCore", "EnumClass", "uint8", []),
    "EWidgetPixelSnapping": ("SlateCore", "EnumClass", "uint8", []),
    "EColorVisionDeficiency": ("SlateCore", "EnumClass", "uint8", []),
    "EControllerHand": ("InputCore", "EnumClass", "uint8", []),
    "ETouchIndex": ("InputCore", "Namespaced", "int", []),
    "EControllerAnalogStick": ("InputCore", "Namespaced", "int", []),
    "EWindowTitleBarMode": ("Engine", "EnumClass", "uint8", []),
    "EUMGSequencePlayMode": ("UMG", "Namespaced", "int", ["Forward", "Reverse", "PingPong"]),
    "EAnimCurveType": ("Engine", "EnumClass", "uint8", []),
    "EClothingTeleportMode": ("Engine", "EnumClass", "uint8", []),
    "EDOFMode": ("Engine", "Namespaced", "int", []),
    "ECameraProjectionMode": ("Engine", "Namespaced", "int", ["Perspective", "Orthographic"]),
    "ECameraShakePlaySpace": ("Engine", "EnumClass", "uint8", ["CameraLocal", "World", "UserDefined"]),
    "EViewTargetBlendFunction": ("Engine", "Regular", "int",
                                 ["VTBlend_Linear", "VTBlend_Cubic", "VTBlend_EaseIn", "VTBlend_EaseOut",
                                  "VTBlend_EaseInOut", "VTBlend_PreBlended", "VTBlend_MAX"]),
    "EHLODBatchingPolicy": ("Engine", "EnumClass", "uint8", []),
    "EHLODLevelExclusion": ("Engine", "EnumClass", "uint8", []),
    "EPSCPoolMethod": ("Engine", "EnumClass", "uint8", ["None", "AutoRelease", "ManualRelease",
                                                         "ManualRelease_OnComplete", "FreeInPool"]),
    "ERadialImpulseFalloff": ("Engine", "Regular", "int", ["RIF_Constant", "RIF_Linear", "RIF_MAX"]),
    "ENetworkFailure": ("Engine", "Namespaced", "int", []),
    "EShadowCacheInvalidationBehavior": ("Engine", "EnumClass", "uint8", []),
    "EStreamingSourcePriority": ("Engine", "EnumClass", "uint8", []),
    "ESuggestProjVelocityTraceOption": ("Engine", "Namespaced", "int", ["DoNotTrace", "TraceFullPath", "OnlyTraceWhileAscending"]),
    "ERuntimeVirtualTextureMainPassType": ("Engine", "EnumClass", "uint8", ["Never", "Exclusive", "Always"]),
    "ETransitionRequestOverwriteMode": ("Engine", "EnumClass", "uint8", []),
    "ETransitionRequestQueueMode": ("Engine", "EnumClass", "uint8", []),
    "EReplicationSystem": ("Engine", "EnumClass", "uint8", ["Default", "Generic", "Iris"]),
    "EPhysicalSurface": ("PhysicsCore", "Regular", "int", []),
    "EPropertyAccessChangeNotifyMode": ("CoreUObject", "EnumClass", "uint8", ["Default", "Never", "Always"]),
    "ERootMotionMode": ("Engine", "Namespaced", "int", ["NoRootMotionExtraction", "IgnoreRootMotion",
                                                        "RootMotionFromEverything", "RootMotionFromMontagesOnly"]),
    "EPathFollowingRequestResult": ("AIModule", "Namespaced", "int", ["Failed", "AlreadyAtGoal", "RequestSuccessful"]),
    "EPathFollowingResult": ("AIModule", "Namespaced", "int", []),
    "EPathFollowingStatus": ("AIModule", "Namespaced", "int", ["Idle", "Waiting", "Paused", "Moving"]),
}

# Delegates the facts use without their declaration: name -> (module, multicast, [(type, name)], return type)
MINIMAL_DELEGATES = {
    "FTimerDynamicDelegate": ("Engine", False, [], None),
    "FWidgetAnimationDynamicEvent": ("UMG", False, [], None),
    "FFieldValueChangedDynamicDelegate": ("FieldNotification", False,
                                          [("UObject*", "Object"), ("FFieldNotificationId", "Field")], None),
    "FCustomWidgetNavigationDelegate": ("UMG", False, [("EUINavigation", "Navigation")], "UWidget*"),
}

# Types the header tool maps onto other property kinds.
ALIAS_TYPES = {"FLargeWorldCoordinatesReal": "double"}

SCALARS = {
    "bool": "bool", "uint8": "byte", "int8": "int8", "int16": "int16", "uint16": "uint16",
    "int32": "int", "int": "int", "uint32": "uint32", "int64": "int64", "uint64": "uint64",
    "float": "float", "double": "double", "FName": "name", "FString": "string", "FText": "text",
}

# Inherited by subclasses, as the header tool propagates them (EClassFlags script-inherit set).
CLASS_SCRIPT_INHERIT = {
    "Transient", "Optional", "DefaultConfig", "Config", "PerObjectConfig", "ConfigDoNotCheckDefaults",
    "NotPlaceable", "Const", "HasInstancedReference", "Deprecated", "DefaultToInstanced",
    "GlobalUserConfig", "ProjectUserConfig", "NeedsDeferredDependencyLoading", "EditInlineNew",
    "CollapseCategories",
}

# UCLASS specifiers that map onto class flags one to one.
CLASS_SPECIFIER_FLAGS = {
    "Abstract": ["Abstract"], "Transient": ["Transient"], "DefaultToInstanced": ["DefaultToInstanced"],
    "EditInlineNew": ["EditInlineNew"], "NotPlaceable": ["NotPlaceable"], "MinimalAPI": ["MinimalAPI"],
    "Const": ["Const"], "HideDropdown": ["HideDropDown"], "Hidden": ["Hidden"],
    "PerObjectConfig": ["PerObjectConfig"], "ConfigDoNotCheckDefaults": ["ConfigDoNotCheckDefaults"],
    "Deprecated": ["Deprecated", "NotPlaceable"], "DefaultConfig": ["DefaultConfig"],
    "GlobalUserConfig": ["GlobalUserConfig"], "ProjectUserConfig": ["ProjectUserConfig"],
    "CollapseCategories": ["CollapseCategories"], "Optional": ["Optional"],
}
CLASS_SPECIFIER_REMOVES = {"Placeable": "NotPlaceable", "NotEditInlineNew": "EditInlineNew",
                           "NonTransient": "Transient", "DontCollapseCategories": "CollapseCategories"}

# UPROPERTY specifiers on members.
MEMBER_SPECIFIER_FLAGS = {
    "EditAnywhere": ["Edit"], "EditInstanceOnly": ["Edit", "DisableEditOnTemplate"],
    "EditDefaultsOnly": ["Edit", "DisableEditOnInstance"], "VisibleAnywhere": ["Edit", "EditConst"],
    "VisibleInstanceOnly": ["Edit", "EditConst", "DisableEditOnTemplate"],
    "VisibleDefaultsOnly": ["Edit", "EditConst", "DisableEditOnInstance"],
    "BlueprintReadWrite": ["BlueprintVisible"], "BlueprintReadOnly": ["BlueprintVisible", "BlueprintReadOnly"],
    "Config": ["Config"], "GlobalConfig": ["GlobalConfig", "Config"], "Transient": ["Transient"],
    "DuplicateTransient": ["DuplicateTransient"], "TextExportTransient": ["TextExportTransient"],
    "NonPIEDuplicateTransient": ["NonPIEDuplicateTransient"], "NonPIETransient": ["NonPIEDuplicateTransient"],
    "Export": ["ExportObject"], "NoClear": ["NoClear"], "EditFixedSize": ["EditFixedSize"],
    "Replicated": ["Net"], "ReplicatedUsing": ["Net", "RepNotify"], "NotReplicated": ["RepSkip"],
    "Interp": ["Edit", "BlueprintVisible", "Interp"], "NonTransactional": ["NonTransactional"],
    "Instanced": ["PersistentInstance", "ExportObject", "InstancedReference"],
    "BlueprintAssignable": ["BlueprintAssignable"], "BlueprintCallable": ["BlueprintCallable"],
    "BlueprintAuthorityOnly": ["BlueprintAuthorityOnly"], "AssetRegistrySearchable": ["AssetRegistrySearchable"],
    "SimpleDisplay": ["SimpleDisplay"], "AdvancedDisplay": ["AdvancedDisplay"], "SaveGame": ["SaveGame"],
    "SkipSerialization": ["SkipSerialization"], "BlueprintGetter": ["BlueprintVisible"],
    "BlueprintSetter": ["BlueprintVisible"],
}
# Specifiers that only affect C++ code generation.
MEMBER_SPECIFIER_IGNORED = {"Getter", "Setter", "FieldNotify", "Experimental"}


class CatalogueError(Exception):
    pass


# --------------------------------------------------------------------------------------
# C++ type parsing
# --------------------------------------------------------------------------------------

_TOKEN_RE = re.compile(r"\s*(::|[A-Za-z_][A-Za-z0-9_]*|[<>,*&]|\S)")


class TypeNode:
    """One C++ type: a (possibly qualified) name, template arguments and qualifiers."""

    def __init__(self, name, args):
        self.name = name
        self.args = args
        self.const_before = False
        self.const_after = False
        self.pointer = False
        self.reference = False

    def __repr__(self):
        return "TypeNode(%s%s)" % (self.name, self.args or "")


def _tokenize(text):
    tokens = []
    pos = 0
    text = text.strip()
    while pos < len(text):
        match = _TOKEN_RE.match(text, pos)
        if not match:
            raise CatalogueError("cannot read type '%s'" % text)
        tokens.append(match.group(1))
        pos = match.end()
    return tokens


def parse_type(text):
    tokens = _tokenize(text)
    node, index = _parse_type_tokens(tokens, 0)
    if index != len(tokens):
        raise CatalogueError("unexpected '%s' in type '%s'" % (tokens[index], text))
    return node


def _parse_type_tokens(tokens, index):
    const_before = False
    while index < len(tokens) and tokens[index] in ("const", "mutable", "class", "struct", "enum"):
        const_before = const_before or tokens[index] == "const"
        index += 1
    if index >= len(tokens):
        raise CatalogueError("missing type name")
    name = tokens[index]
    index += 1
    while index + 1 < len(tokens) and tokens[index] == "::":
        name += "::" + tokens[index + 1]
        index += 2
    args = []
    if index < len(tokens) and tokens[index] == "<":
        index += 1
        while True:
            arg, index = _parse_type_tokens(tokens, index)
            args.append(arg)
            if index >= len(tokens):
                raise CatalogueError("unterminated template argument list")
            if tokens[index] == ",":
                index += 1
                continue
            if tokens[index] == ">":
                index += 1
                break
            raise CatalogueError("unexpected '%s' in template arguments" % tokens[index])
    node = TypeNode(name, args)
    node.const_before = const_before
    while index < len(tokens) and tokens[index] in ("const", "*", "&"):
        token = tokens[index]
        if token == "const":
            node.const_after = True
        elif token == "*":
            node.pointer = True
        else:
            node.reference = True
        index += 1
    return node, index


# --------------------------------------------------------------------------------------
# Default values, as the header tool writes them into CPP_Default_ metadata
# --------------------------------------------------------------------------------------

def _eval_number(text):
    """Value of a C++ numeric literal or a small constant expression (unary minus, casts)."""
    expr = text.strip()
    if expr in ("INDEX_NONE",):
        return -1
    negative = False
    while expr.startswith("-") or expr.startswith("+"):
        negative = negative != expr.startswith("-")
        expr = expr[1:].strip()
    if re.fullmatch(r"0[xX][0-9a-fA-F]+[uUlL]*", expr):
        value = int(expr.rstrip("uUlL"), 16)
    else:
        literal = expr.rstrip("fFlLuU") if not re.search(r"[eE][+-]?\d+[fF]$", expr) else expr[:-1]
        literal = literal.rstrip("fF")
        if not re.fullmatch(r"(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?|\d+\.?[eE][+-]?\d+", literal):
            raise CatalogueError("not a number: '%s'" % text)
        value = float(literal) if re.search(r"[.eE]", literal) else int(literal)
    return -value if negative else value


def _format_f6(value):
    return "%.6f" % float(value)


def _split_args(text):
    """Split 'a, b(c, d), e' at top-level commas."""
    parts, depth, current = [], 0, ""
    for char in text:
        if char in "(<{":
            depth += 1
        elif char in ")>}":
            depth -= 1
        if char == "," and depth == 0:
            parts.append(current.strip())
            current = ""
        else:
            current += char
    if current.strip():
        parts.append(current.strip())
    return parts


def _call_args(text, callee):
    """Arguments of 'Callee(...)' or None when the text is not such a call."""
    text = text.strip()
    if not text.startswith(callee):
        return None
    rest = text[len(callee):].strip()
    if not (rest.startswith("(") and rest.endswith(")")):
        return None
    return _split_args(rest[1:-1])


def _unwrap_string(text, type_name):
    """The contents of "x", TEXT("x"), Type(TEXT("x")) or Type() as the header tool reads them."""
    text = text.strip()
    args = _call_args(text, type_name)
    if args is not None:
        if not args:
            return ""
        if len(args) != 1:
            raise CatalogueError("cannot read string default '%s'" % text)
        text = args[0]
    args = _call_args(text, "TEXT")
    if args is not None:
        if len(args) != 1:
            raise CatalogueError("cannot read string default '%s'" % text)
        text = args[0]
    if len(text) >= 2 and text[0] == '"' and text[-1] == '"':
        return text[1:-1].replace('\\"', '"').replace("\\\\", "\\")
    raise CatalogueError("cannot read string default '%s'" % text)


_NAMED_LINEAR_COLORS = {
    "White": (1, 1, 1, 1), "Gray": (0.5, 0.5, 0.5, 1), "Black": (0, 0, 0, 1), "Transparent": (0, 0, 0, 0),
    "Red": (1, 0, 0, 1), "Green": (0, 1, 0, 1), "Blue": (0, 0, 1, 1), "Yellow": (1, 1, 0, 1),
}
_NAMED_COLORS = {
    "White": (255, 255, 255, 255), "Black": (0, 0, 0, 255), "Red": (255, 0, 0, 255),
    "Green": (0, 255, 0, 255), "Blue": (0, 0, 255, 255), "Yellow": (255, 255, 0, 255),
    "Cyan": (0, 255, 255, 255), "Magenta": (255, 0, 255, 255),
}


def _struct_default(struct_cpp, text):
    text = text.strip()
    if struct_cpp == "FVector":
        named = {"ZeroVector": "", "UpVector": (0, 0, 1), "ForwardVector": (1, 0, 0), "RightVector": (0, 1, 0),
                 "OneVector": None}
        if text.startswith("FVector::"):
            key = text[len("FVector::"):]
            if key not in named or named[key] is None:
                raise CatalogueError("unknown vector constant '%s'" % text)
            return named[key] if named[key] == "" else ",".join(_format_f6(v) for v in named[key])
        args = _call_args(text, "FVector")
        if args is None:
            raise CatalogueError("cannot read vector default '%s'" % text)
        if args == ["ForceInit"]:
            return ""
        if len(args) == 1:
            args = args * 3
        if len(args) != 3:
            raise CatalogueError("cannot read vector default '%s'" % text)
        return ",".join(_format_f6(_eval_number(a)) for a in args)
    if struct_cpp == "FRotator":
        if text == "FRotator::ZeroRotator":
            return ""
        args = _call_args(text, "FRotator")
        if args is None:
            raise CatalogueError("cannot read rotator default '%s'" % text)
        if args == ["ForceInit"]:
            return ""
        if len(args) != 3:
            raise CatalogueError("cannot read rotator default '%s'" % text)
        return ",".join(_format_f6(_eval_number(a)) for a in args)
    if struct_cpp == "FVector2D":
        if text == "FVector2D::ZeroVector":
            return ""
        if text == "FVector2D::UnitVector":
            return "(X=1.000,Y=1.000)"
        args = _call_args(text, "FVector2D")
        if args is None or (args != ["ForceInit"] and len(args) != 2):
            raise CatalogueError("cannot read 2D vector default '%s'" % text)
        if args == ["ForceInit"]:
            return ""
        return "(X=%.3f,Y=%.3f)" % (float(_eval_number(args[0])), float(_eval_number(args[1])))
    if struct_cpp == "FLinearColor":
        if text.startswith("FLinearColor::"):
            key = text[len("FLinearColor::"):]
            if key not in _NAMED_LINEAR_COLORS:
                raise CatalogueError("unknown colour constant '%s'" % text)
            values = _NAMED_LINEAR_COLORS[key]
        else:
            args = _call_args(text, "FLinearColor")
            if args == ["ForceInit"]:
                return ""
            if args is None or len(args) not in (3, 4):
                raise CatalogueError("cannot read colour default '%s'" % text)
            values = [_eval_number(a) for a in args] + ([1.0] if len(args) == 3 else [])
        return "(R=%s,G=%s,B=%s,A=%s)" % tuple(_format_f6(v) for v in values)
    if struct_cpp == "FColor":
        if text.startswith("FColor::"):
            key = text[len("FColor::"):]
            if key not in _NAMED_COLORS:
                raise CatalogueError("unknown colour constant '%s'" % text)
            values = _NAMED_COLORS[key]
        else:
            args = _call_args(text, "FColor")
            if args == ["ForceInit"]:
                return ""
            if args is None or len(args) not in (3, 4):
                raise CatalogueError("cannot read colour default '%s'" % text)
            values = [int(_eval_number(a)) for a in args] + ([255] if len(args) == 3 else [])
        return "(R=%d,G=%d,B=%d,A=%d)" % tuple(values)
    args = _call_args(text, struct_cpp)
    if args == []:
        return "()"
    raise CatalogueError("cannot read %s default '%s'" % (struct_cpp, text))


# --------------------------------------------------------------------------------------
# The catalogue model
# --------------------------------------------------------------------------------------

def strip_prefix(cpp_name):
    return cpp_name[1:] if cpp_name[:1] in ("U", "A", "I", "F", "E") and len(cpp_name) > 1 else cpp_name


def script_path(module, name):
    return "/Script/%s.%s" % (module, name)


class Catalogue:
    def __init__(self, facts_dir):
        self.facts_dir = facts_dir
        self.records = []          # (relative file, record)
        self.classes = {}          # cpp -> dict
        self.structs = {}          # cpp -> dict
        self.enums = {}            # name -> dict
        self.delegates = {}        # F name -> dict
        self.engine_class_names = {}  # engine name -> cpp
        self.errors = []
        self.warnings = []

    # ---- loading -------------------------------------------------------------------
    def load(self):
        files = []
        for root, _dirs, names in os.walk(self.facts_dir):
            for name in names:
                if name.endswith(".jsonl"):
                    files.append(os.path.relpath(os.path.join(root, name), self.facts_dir))
        if not files:
            raise CatalogueError("no .jsonl facts under %s" % self.facts_dir)
        for rel in sorted(files):
            with open(os.path.join(self.facts_dir, rel), encoding="utf-8") as handle:
                for number, line in enumerate(handle, 1):
                    if not line.strip():
                        continue
                    try:
                        self.records.append((rel, json.loads(line)))
                    except json.JSONDecodeError as error:
                        raise CatalogueError("%s:%d: %s" % (rel, number, error))
        self._index()

    def _add_class(self, cpp, module, super_cpp, source, minimal, flags=None, meta=None, record=None):
        if cpp in self.classes:
            raise CatalogueError("class %s declared twice" % cpp)
        entry = {
            "cpp": cpp, "name": strip_prefix(cpp), "module": module, "super": super_cpp,
            "source": source, "minimal": minimal, "flags": list(flags or []), "meta": dict(meta or {}),
            "record": record, "properties": [], "functions": [], "interfaces": [],
        }
        self.classes[cpp] = entry
        self.engine_class_names[entry["name"]] = cpp
        return entry

    def _index(self):
        for cpp, (name, super_cpp) in CORE_NATIVE_CLASSES.items():
            self._add_class(cpp, "CoreUObject", super_cpp, "native", False)
        facts_classes = []
        for rel, record in self.records:
            kind = record["kind"]
            if kind == "class":
                entry = self._add_class(record["cpp"], record["module"], None, "facts", False, record=record)
                facts_classes.append(entry)
            elif kind == "struct":
                if record["cpp"] in self.structs:
                    raise CatalogueError("struct %s declared twice" % record["cpp"])
                self.structs[record["cpp"]] = {"cpp": record["cpp"], "name": record["name"], "module": record["module"],
                                               "record": record, "minimal": False}
            elif kind == "enum":
                if record["name"] in self.enums:
                    raise CatalogueError("enum %s declared twice" % record["name"])
                module = record["module"]
                self.enums[record["name"]] = {"name": record["name"], "module": module, "record": record,
                                              "minimal": False, "form": _enum_form(record["cppForm"])}
            elif kind == "delegate":
                self.delegates[record["name"]] = {"name": record["name"], "record": record, "minimal": False}
        for cpp, (module, super_cpp, flags, meta) in MINIMAL_CLASSES.items():
            if cpp not in self.classes:
                self._add_class(cpp, module, super_cpp, "minimal", True, flags=flags, meta=meta)
        for cpp, module in MINIMAL_INTERFACES.items():
            if cpp not in self.classes:
                self._add_class(cpp, module, "UInterface", "minimal", True, flags=["Abstract", "Interface"])
        for cpp, spec in MINIMAL_STRUCTS.items():
            if cpp not in self.structs:
                module, super_cpp, members = (spec, None, []) if isinstance(spec, str) else spec
                self.structs[cpp] = {"cpp": cpp, "name": cpp[1:], "module": module, "record": None, "minimal": True,
                                     "super": super_cpp, "members": members}
        for name, (module, form, underlying, values) in MINIMAL_ENUMS.items():
            if name not in self.enums:
                self.enums[name] = {"name": name, "module": module, "record": None, "minimal": True,
                                    "form": form, "underlying": underlying, "values": values}
        for name, (module, multicast, params, return_type) in MINIMAL_DELEGATES.items():
            if name not in self.delegates:
                self.delegates[name] = {"name": name, "minimal": True, "record": {
                    "kind": "delegate", "name": name, "multicast": multicast,
                    "macro": "DECLARE_DYNAMIC_%sDELEGATE" % ("MULTICAST_" if multicast else ""),
                    "params": [{"type": t, "name": n} for t, n in params], "return": return_type}, "module": module}
        # Resolve each facts class's super (engine name) and module of delegates.
        for entry in facts_classes:
            super_name = entry["record"]["super"]
            super_cpp = self.engine_class_names.get(super_name)
            if super_cpp is None:
                raise CatalogueError("class %s: unknown super class %s" % (entry["cpp"], super_name))
            entry["super"] = super_cpp
        for rel, record in self.records:
            if record["kind"] == "delegate":
                module = rel.split(os.sep)[0].split("/")[0]
                self.delegates[record["name"]]["module"] = module
        self._sort_class_hierarchy_checks()

    def _sort_class_hierarchy_checks(self):
        for cpp, entry in self.classes.items():
            seen = set()
            current = cpp
            while current is not None:
                if current in seen:
                    raise CatalogueError("class hierarchy loop at %s" % cpp)
                seen.add(current)
                if current not in self.classes:
                    raise CatalogueError("class %s: super %s is unknown" % (cpp, current))
                current = self.classes[current]["super"]

    # ---- lookups -------------------------------------------------------------------
    def class_path(self, cpp):
        entry = self.classes[cpp]
        return script_path(entry["module"], entry["name"])

    def is_child_of(self, cpp, base_cpp):
        current = cpp
        while current is not None:
            if current == base_cpp:
                return True
            current = self.classes[current]["super"]
        return False

    def is_interface(self, cpp):
        return cpp != "UInterface" and self.is_child_of(cpp, "UInterface")

    def delegate_signature_path(self, name):
        entry = self.delegates[name]
        record = entry["record"]
        function_name = name[1:] + "__DelegateSignature"
        owner = record.get("declaredIn")
        if owner:
            owner_cpp = self.engine_class_names.get(owner) or owner
            if owner_cpp not in self.classes:
                raise CatalogueError("delegate %s declared in unknown class %s" % (name, owner))
            return "%s:%s" % (self.class_path(owner_cpp), function_name)
        return script_path(entry["module"], function_name)

    # ---- properties ----------------------------------------------------------------
    def resolve_property(self, node, where, template_argument=False):
        """Describe the property the header tool makes of a C++ type (kind, paths, flags)."""
        name = ALIAS_TYPES.get(node.name, node.name)
        flags = []
        desc = {}
        if name in SCALARS and not node.args:
            desc["kind"] = SCALARS[name]
            return desc, flags
        if name in ("TArray", "TSet"):
            if len(node.args) != 1:
                raise CatalogueError("%s: %s needs one argument" % (where, name))
            inner, _ = self.resolve_property(node.args[0], where, True)
            desc["kind"] = "array" if name == "TArray" else "set"
            desc["inner"] = inner
            return desc, flags
        if name == "TMap":
            if len(node.args) != 2:
                raise CatalogueError("%s: TMap needs two arguments" % where)
            key, _ = self.resolve_property(node.args[0], where, True)
            value, _ = self.resolve_property(node.args[1], where, True)
            desc.update({"kind": "map", "key": key, "value": value})
            return desc, flags
        if name == "TEnumAsByte":
            enum = self._find_enum(node.args[0].name, where)
            desc.update({"kind": "byte", "enum": self.enum_path(enum)})
            return desc, flags
        wrappers = {"TSubclassOf": "class", "TSoftObjectPtr": "softobject", "TSoftClassPtr": "softclass",
                    "TWeakObjectPtr": "weakobject", "TObjectPtr": "object", "TScriptInterface": "interface"}
        if name in wrappers:
            if len(node.args) != 1:
                raise CatalogueError("%s: %s needs one argument" % (where, name))
            target = node.args[0].name
            if name == "TScriptInterface":
                cpp = "U" + target[1:] if target.startswith("I") else target
            else:
                cpp = target
            if cpp not in self.classes:
                raise CatalogueError("%s: unknown class %s" % (where, target))
            kind = wrappers[name]
            if kind == "object" and self.is_child_of(cpp, "UClass"):
                kind = "class"
                desc.update({"kind": kind, "class": self.class_path("UObject")})
            else:
                desc.update({"kind": kind, "class": self.class_path(cpp)})
            flags.append("UObjectWrapper")
            if name == "TObjectPtr":
                flags.append("TObjectPtr")
            return desc, flags
        if name == "FScriptInterface" and not node.pointer:
            desc.update({"kind": "interface", "class": self.class_path("UInterface")})
            flags.append("UObjectWrapper")
            return desc, flags
        if name in ("TFieldPath",):
            desc["kind"] = "fieldpath"
            return desc, flags
        # Plain named types: classes (by pointer), structs, delegates, enums.
        if node.pointer:
            cpp = name
            if cpp not in self.classes:
                raise CatalogueError("%s: unknown class %s" % (where, name))
            if self.is_interface(cpp):
                desc.update({"kind": "interface", "class": self.class_path(cpp)})
                flags.append("UObjectWrapper")
            elif self.is_child_of(cpp, "UClass"):
                desc.update({"kind": "class", "class": self.class_path("UObject")})
            else:
                desc.update({"kind": "object", "class": self.class_path(cpp)})
            return desc, flags
        base_name = name.split("::")[0]
        if name in self.delegates:
            record = self.delegates[name]["record"]
            if record.get("multicast"):
                desc["kind"] = "mcdelegate"
                if record.get("sparseOwner"):
                    desc["sparse"] = True
            else:
                desc["kind"] = "delegate"
            desc["signature"] = self.delegate_signature_path(name)
            return desc, flags
        if name in self.structs:
            desc.update({"kind": "struct", "struct": self.struct_path(name)})
            return desc, flags
        if base_name in self.enums:
            enum = self.enums[base_name]
            if enum["form"] == "EnumClass":
                desc.update({"kind": "enum", "enum": self.enum_path(base_name),
                             "underlying": _underlying_kind(self.enum_underlying(base_name))})
            else:
                desc.update({"kind": "byte", "enum": self.enum_path(base_name)})
            return desc, flags
        raise CatalogueError("%s: unknown type %s" % (where, name))

    def _find_enum(self, name, where):
        base = name.split("::")[0]
        if base not in self.enums:
            raise CatalogueError("%s: unknown enum %s" % (where, name))
        return base

    def enum_path(self, name):
        return script_path(self.enums[name]["module"], name)

    def struct_path(self, cpp):
        entry = self.structs[cpp]
        return script_path(entry["module"], entry["name"])

    def enum_underlying(self, name):
        enum = self.enums[name]
        if enum["record"] is not None:
            return enum["record"]["underlying"]
        return enum["underlying"]

    def enum_value_names(self, name):
        """Short enumerator names, as a default value names them."""
        enum = self.enums[name]
        if enum["record"] is not None:
            return [v["name"] for v in enum["record"]["values"]]
        return list(enum["values"])

    # ---- defaults ------------------------------------------------------------------
    def sanitize_default(self, desc, node, text, where):
        kind = desc["kind"]
        text = text.strip()
        if kind == "bool":
            if text in ("true", "false"):
                return text
            raise CatalogueError("%s: bool default '%s'" % (where, text))
        if kind in ("int", "int8", "int16", "uint16", "uint32", "int64", "uint64") or (kind == "byte" and "enum" not in desc):
            value = _eval_number(text)
            if isinstance(value, float):
                if value != int(value):
                    raise CatalogueError("%s: integer default '%s'" % (where, text))
                value = int(value)
            return str(value)
        if kind in ("float", "double"):
            return _format_f6(_eval_number(text))
        if kind == "name":
            if text == "NAME_None":
                return "None"
            return _unwrap_string(text, "FName")
        if kind == "string":
            return _unwrap_string(text, "FString")
        if kind == "text":
            if text in ("FText()", "FText::GetEmpty()"):
                return ""
            args = _call_args(text, "INVTEXT")
            if args is not None and len(args) == 1:
                return "INVTEXT(%s)" % args[0]
            args = _call_args(text, "NSLOCTEXT")
            if args is not None and len(args) == 3:
                return "NSLOCTEXT(%s, %s, %s)" % (args[0], args[1], args[2])
            raise CatalogueError("%s: text default '%s'" % (where, text))
        if kind in ("object", "class", "softobject", "softclass", "weakobject", "interface"):
            if text in ("NULL", "nullptr", "0", "{}"):
                return "None"
            raise CatalogueError("%s: object default '%s'" % (where, text))
        if kind in ("enum", "byte"):
            enum_name = desc["enum"].rsplit(".", 1)[1]
            parts = text.split("::")
            short = "::".join(parts[1:]) if len(parts) > 1 else parts[0]
            if short.startswith("Type::"):
                short = short[len("Type::"):]
            if short not in self.enum_value_names(enum_name):
                raise CatalogueError("%s: '%s' is not an entry of %s" % (where, text, enum_name))
            return short
        if kind == "struct":
            struct_cpp = node.name
            return _struct_default(struct_cpp, text)
        raise CatalogueError("%s: no default value form for %s" % (where, kind))


def _enum_form(cpp_form):
    return {"enum class": "EnumClass", "enum": "Regular", "namespace": "Namespaced"}[cpp_form]


def _underlying_kind(underlying):
    return {"uint8": "byte", "int8": "int8", "int16": "int16", "uint16": "uint16", "int32": "int", "int": "int",
            "uint32": "uint32", "int64": "int64", "uint64": "uint64"}[underlying]


# --------------------------------------------------------------------------------------
# Building the output
# --------------------------------------------------------------------------------------

def _add_flags(flags, extra):
    for flag in extra:
        if flag not in flags:
            flags.append(flag)


def _meta_value(value):
    return "" if value is None else str(value)


class Builder:
    def __init__(self, catalogue):
        self.cat = catalogue
        self.modules = {}

    def module(self, name):
        if name not in self.modules:
            self.modules[name] = {"enums": [], "structs": [], "delegates": [], "classes": []}
        return self.modules[name]

    def error(self, message):
        self.cat.errors.append(message)

    # ---- parameters ----------------------------------------------------------------
    def build_param(self, param, function_where, is_return=False, advanced=None):
        where = "%s(%s)" % (function_where, param.get("name", "ReturnValue"))
        node = parse_type(param["type"])
        desc, type_flags = self.cat.resolve_property(node, where)
        flags = ["Parm"]
        meta = {}
        if is_return:
            _add_flags(flags, ["OutParm", "ReturnParm"])
        else:
            if node.const_before:
                _add_flags(flags, ["ConstParm"])
                meta["NativeConst"] = ""
            elif node.const_after and node.pointer:
                meta["NativeConst"] = ""
            if param.get("ref"):
                _add_flags(flags, ["OutParm", "ReferenceParm"])
            if node.reference:
                if desc["kind"] == "string":
                    # The header tool reads 'const FString&' as a plain input and 'FString&' as an output.
                    if "ConstParm" in flags:
                        flags.remove("ConstParm")
                    else:
                        _add_flags(flags, ["OutParm"])
                else:
                    _add_flags(flags, ["OutParm"])
                    if "ConstParm" in flags:
                        _add_flags(flags, ["ReferenceParm"])
            if param.get("uparam", {}).get("Required"):
                _add_flags(flags, ["RequiredParm"])
            if advanced is not None and advanced.should_mark(param["name"]):
                _add_flags(flags, ["AdvancedDisplay"])
        _add_flags(flags, ["NativeAccessSpecifierPublic"])
        _add_flags(flags, type_flags)
        if param.get("displayName"):
            meta["DisplayName"] = param["displayName"]
        for key, value in (param.get("paramMeta") or {}).items():
            meta[key] = _meta_value(value)
        out = {"name": "ReturnValue" if is_return else param["name"]}
        out.update(desc)
        out["flags"] = flags
        if meta:
            out["meta"] = dict(sorted(meta.items()))
        return out, node, desc

    # ---- functions -----------------------------------------------------------------
    def build_function(self, record, owner_cpp, interface_owner=False):
        cat = self.cat
        where = "%s::%s" % (owner_cpp, record["name"])
        flags = ["Native"]
        specifiers = [s.split("=")[0] for s in record["specifiers"]]
        meta = {}
        export_final_blockers = bool(record.get("virtual"))
        force_impure = False
        for spec_text in record["specifiers"]:
            spec, _, value = spec_text.partition("=")
            if spec == "BlueprintCallable":
                _add_flags(flags, ["BlueprintCallable"])
            elif spec == "BlueprintPure":
                _add_flags(flags, ["BlueprintCallable"])
                if value.strip().lower() in ("", "true"):
                    _add_flags(flags, ["BlueprintPure"])
                else:
                    force_impure = True
            elif spec == "BlueprintImplementableEvent":
                _add_flags(flags, ["Event", "BlueprintEvent"])
                flags.remove("Native")
            elif spec == "BlueprintNativeEvent":
                _add_flags(flags, ["Event", "BlueprintEvent"])
            elif spec == "BlueprintAuthorityOnly":
                _add_flags(flags, ["BlueprintAuthorityOnly"])
            elif spec == "BlueprintCosmetic":
                _add_flags(flags, ["BlueprintCosmetic"])
            elif spec == "BlueprintGetter":
                _add_flags(flags, ["BlueprintCallable", "BlueprintPure"])
                meta["BlueprintGetter"] = ""
            elif spec == "BlueprintSetter":
                _add_flags(flags, ["BlueprintCallable"])
                meta["BlueprintSetter"] = ""
            elif spec == "Client":
                _add_flags(flags, ["Net", "NetClient"])
            elif spec == "Server":
                _add_flags(flags, ["Net", "NetServer"])
            elif spec == "NetMulticast":
                _add_flags(flags, ["Net", "NetMulticast"])
            elif spec == "Reliable":
                _add_flags(flags, ["NetReliable"])
            elif spec in ("Unreliable", "CustomThunk", "SealedEvent", "FieldNotify"):
                if spec == "CustomThunk":
                    meta["CustomThunk"] = "true"
            elif spec == "Exec":
                _add_flags(flags, ["Exec"])
            else:
                self.error("%s: unknown function specifier %s" % (where, spec_text))
        if "Net" in flags:
            _add_flags(flags, ["Event"])
        # Access is not part of the facts: functions are recorded as public.
        _add_flags(flags, ["Public"])
        automatically_final = not ("BlueprintEvent" in flags or "Net" in flags or export_final_blockers)
        if automatically_final or "final" in (record.get("cppQualifiers") or []):
            _add_flags(flags, ["Final"])
        if record.get("static"):
            _add_flags(flags, ["Static"])
        if record.get("editorOnly"):
            _add_flags(flags, ["EditorOnly"])
        if record.get("const"):
            _add_flags(flags, ["Const"])
        if record.get("category"):
            meta["Category"] = record["category"]
        for key, value in record["meta"].items():
            meta[key] = _meta_value(value)
        advanced = AdvancedDisplay(meta.get("AdvancedDisplay"))
        params = []
        store_defaults = "BlueprintCallable" in flags or "Exec" in flags or "AICallable" in meta
        has_outputs = record.get("return") is not None
        for param in record["params"]:
            try:
                built, node, desc = self.build_param(param, where, advanced=advanced)
            except CatalogueError as error:
                self.error(str(error))
                return None
            params.append(built)
            if "OutParm" in built["flags"]:
                has_outputs = True
            if store_defaults and "default" in param:
                key = "CPP_Default_" + param["name"]
                if key not in meta:
                    try:
                        meta[key] = cat.sanitize_default(desc, node, param["default"], "%s(%s)" % (where, param["name"]))
                    except CatalogueError as error:
                        self.error(str(error))
        if record.get("return"):
            try:
                built, _node, _desc = self.build_param({"type": record["return"]}, where, is_return=True)
            except CatalogueError as error:
                self.error(str(error))
                return None
            params.append(built)
        # A const callable function with outputs is pure unless it says BlueprintPure=false.
        if record.get("const") and "BlueprintPure" not in flags and has_outputs and \
                "BlueprintCallable" in flags and not force_impure:
            _add_flags(flags, ["BlueprintPure"])
        for built in params:
            if "OutParm" in built["flags"] and "ReturnParm" not in built["flags"]:
                _add_flags(flags, ["HasOutParms"])
            if built["kind"] == "struct":
                struct = self._struct_by_path(built["struct"])
                if struct is not None and struct.get("record") and "HasDefaults" in struct["record"]["specifiers"]:
                    _add_flags(flags, ["HasDefaults"])
        out = {"name": record["name"], "flags": flags}
        if meta:
            out["meta"] = dict(sorted(meta.items()))
        if params:
            out["params"] = params
        return out

    def _struct_by_path(self, path):
        for entry in self.cat.structs.values():
            if self.cat.struct_path(entry["cpp"]) == path:
                return entry
        return None

    def build_delegate(self, entry):
        record = entry["record"]
        name = record["name"]
        where = "delegate " + name
        flags = ["Public", "Delegate"]
        if record.get("multicast"):
            flags.append("MulticastDelegate")
        params = []
        for param in record["params"]:
            try:
                built, _node, _desc = self.build_param(param, where)
            except CatalogueError as error:
                self.error(str(error))
                return None
            params.append(built)
        if record.get("return"):
            try:
                built, _node, _desc = self.build_param({"type": record["return"]}, where, is_return=True)
            except CatalogueError as error:
                self.error(str(error))
                return None
            params.append(built)
        for built in params:
            if "OutParm" in built["flags"] and "ReturnParm" not in built["flags"]:
                _add_flags(flags, ["HasOutParms"])
        out = {"name": name[1:] + "__DelegateSignature", "flags": flags}
        owner = record.get("declaredIn")
        if owner:
            owner_cpp = self.cat.engine_class_names.get(owner) or owner
            out["outer"] = self.cat.class_path(owner_cpp)
        if record.get("sparseOwner"):
            out["sparse"] = {"owner": strip_prefix(record["sparseOwner"]), "property": record["sparseProperty"]}
        if params:
            out["params"] = params
        if entry.get("minimal"):
            out["minimal"] = True
        return out

    # ---- member properties ---------------------------------------------------------
    def build_member(self, record, owner_where, in_struct):
        where = "%s.%s" % (owner_where, record["name"])
        type_text = record["type"]
        if record.get("bitfield"):
            type_text = "bool"
        node = parse_type(type_text)
        try:
            desc, type_flags = self.cat.resolve_property(node, where)
        except CatalogueError as error:
            self.error(str(error))
            return None
        flags = []
        meta = {}
        for spec_text in record["specifiers"]:
            spec, _, value = spec_text.partition("=")
            spec = spec.strip()
            value = value.strip().strip('"')
            if spec in MEMBER_SPECIFIER_FLAGS:
                _add_flags(flags, MEMBER_SPECIFIER_FLAGS[spec])
                if spec == "BlueprintGetter":
                    meta["BlueprintGetter"] = value
                elif spec == "BlueprintSetter":
                    meta["BlueprintSetter"] = value
                elif spec == "Instanced":
                    meta["EditInline"] = "true"
            elif spec in MEMBER_SPECIFIER_IGNORED:
                pass
            else:
                self.error("%s: unknown property specifier %s" % (where, spec_text))
        if "BlueprintGetter" in meta and "BlueprintSetter" not in meta and \
                not any(s.split("=")[0] == "BlueprintReadWrite" for s in record["specifiers"]):
            _add_flags(flags, ["BlueprintReadOnly"])
        if record.get("editorOnly") or "WITH_EDITORONLY_DATA" in (record.get("preprocessor") or []):
            _add_flags(flags, ["EditorOnly"])
        if record.get("category"):
            meta["Category"] = record["category"]
        for key, value in record["meta"].items():
            meta[key] = _meta_value(value)
        if "ExposeOnSpawn" in meta:
            _add_flags(flags, ["ExposeOnSpawn"])
        name = record["name"]
        if name.endswith("_DEPRECATED"):
            name = name[:-len("_DEPRECATED")]
            _add_flags(flags, ["Deprecated"])
        # Access is not part of the facts; members that need AllowPrivateAccess are not public.
        if "AllowPrivateAccess" in meta and meta["AllowPrivateAccess"].lower() != "false":
            _add_flags(flags, ["NativeAccessSpecifierPrivate"])
        else:
            _add_flags(flags, ["NativeAccessSpecifierPublic"])
        _add_flags(flags, type_flags)
        out = {"name": name}
        out.update(desc)
        out["flags"] = flags
        if meta:
            out["meta"] = dict(sorted(meta.items()))
        if record.get("cppInit") is not None:
            try:
                out["default"] = self.export_default(desc, node, record["cppInit"], where)
            except CatalogueError as error:
                self.cat.warnings.append("%s: initial value not recorded (%s)" % (where, error))
        return out

    def export_default(self, desc, node, text, where):
        """The engine's exported text for an in-class initializer."""
        kind = desc["kind"]
        text = text.strip()
        if kind == "bool":
            if text in ("true", "false"):
                return "True" if text == "true" else "False"
            raise CatalogueError("bool initializer '%s'" % text)
        if kind in ("float", "double"):
            return "%.6f" % float(_eval_number(text))
        if kind in ("int", "int8", "int16", "uint16", "uint32", "int64", "uint64") or (kind == "byte" and "enum" not in desc):
            return str(int(_eval_number(text)))
        if kind in ("enum", "byte"):
            return self.cat.sanitize_default(desc, node, text, where)
        if kind == "struct" and node.name == "FIntPoint":
            args = _call_args(text, "FIntPoint")
            if args and len(args) == 2:
                return "(X=%d,Y=%d)" % (int(_eval_number(args[0])), int(_eval_number(args[1])))
        raise CatalogueError("initializer '%s'" % text)

    # ---- enums, structs, classes ---------------------------------------------------
    def build_enum(self, entry):
        out = {"name": entry["name"], "form": entry["form"]}
        meta = {}
        values = []
        record = entry["record"]
        if record is not None:
            out["underlying"] = record["underlying"]
            for spec in record["specifiers"]:
                if spec == "BlueprintType":
                    meta["BlueprintType"] = "true"
                elif spec == "Flags":
                    out["flags"] = ["Flags"]
                else:
                    self.error("enum %s: unknown specifier %s" % (entry["name"], spec))
            for key, value in record["meta"].items():
                meta[key] = _meta_value(value)
            if "Bitflags" in meta:
                out.setdefault("flags", [])
            known = {}
            next_value = 0
            for value in record["values"]:
                if "value" in value:
                    number = _eval_enum_expression(value["value"], known, entry["name"])
                else:
                    number = next_value
                known[value["name"]] = number
                next_value = number + 1
                item = {"name": value["name"], "value": number}
                value_meta = {}
                if value.get("displayName"):
                    value_meta["DisplayName"] = value["displayName"]
                for key, item_value in (value.get("meta") or {}).items():
                    value_meta[key] = _meta_value(item_value)
                if value_meta:
                    item["meta"] = dict(sorted(value_meta.items()))
                values.append(item)
        else:
            out["underlying"] = entry["underlying"]
            for index, value in enumerate(entry["values"]):
                values.append({"name": value, "value": index})
            out["minimal"] = True
        if meta:
            out["meta"] = dict(sorted(meta.items()))
        out["values"] = values
        return out

    def build_struct(self, entry):
        out = {"name": entry["name"]}
        record = entry["record"]
        if record is None:
            if entry["super"]:
                out["super"] = self.cat.struct_path(entry["super"])
            properties = []
            for member_type, member_name in entry["members"]:
                built = self.build_member({"name": member_name, "type": member_type, "specifiers": [], "meta": {}},
                                          entry["cpp"], True)
                if built is not None:
                    properties.append(built)
            if properties:
                out["properties"] = properties
            out["minimal"] = True
            return out
        if record.get("super"):
            super_cpp = "F" + record["super"]
            if super_cpp not in self.cat.structs:
                self.error("struct %s: unknown super %s" % (entry["cpp"], record["super"]))
            else:
                out["super"] = self.cat.struct_path(super_cpp)
        flags = []
        meta = {}
        for spec_text in record["specifiers"]:
            spec, _, value = spec_text.partition("=")
            if spec == "immutable":
                _add_flags(flags, ["Immutable", "Atomic"])
            elif spec == "atomic":
                _add_flags(flags, ["Atomic"])
            elif spec == "noexport":
                _add_flags(flags, ["NoExport"])
            elif spec == "BlueprintType":
                meta["BlueprintType"] = "true"
            elif spec == "BlueprintInternalUseOnly":
                meta["BlueprintInternalUseOnly"] = "true"
            elif spec in ("IsAlwaysAccessible", "HasDefaults", "HasNoOpConstructor", "IsCoreType"):
                pass
            else:
                self.error("struct %s: unknown specifier %s" % (entry["cpp"], spec_text))
        for key, value in record["meta"].items():
            meta[key] = _meta_value(value)
        if flags:
            out["flags"] = flags
        if meta:
            out["meta"] = dict(sorted(meta.items()))
        properties = []
        for member in record["members"]:
            built = self.build_member(member, entry["cpp"], True)
            if built is not None:
                properties.append(built)
        if properties:
            out["properties"] = properties
        return out

    def build_class(self, entry, members):
        cat = self.cat
        out = {"name": entry["name"]}
        if entry["super"] is not None:
            out["super"] = cat.class_path(entry["super"])
        flags = list(entry["flags"])
        meta = dict(entry["meta"])
        config = None
        within = None
        interfaces = []
        record = entry["record"]
        if entry["source"] == "native":
            out["native"] = True
        else:
            _add_flags(flags, ["Native"])
        if record is not None:
            hide, show, groups = [], [], []
            for spec_text in record["specifiers"]:
                spec, _, value = spec_text.partition("=")
                values = [v.strip().strip('"') for v in _split_args(value)] if value else []
                if spec in CLASS_SPECIFIER_FLAGS:
                    _add_flags(flags, CLASS_SPECIFIER_FLAGS[spec])
                elif spec in CLASS_SPECIFIER_REMOVES:
                    if CLASS_SPECIFIER_REMOVES[spec] in flags:
                        flags.remove(CLASS_SPECIFIER_REMOVES[spec])
                elif spec == "Config":
                    config = values[0]
                    _add_flags(flags, ["Config"])
                elif spec == "Within":
                    within = values[0]
                elif spec == "BlueprintType":
                    meta["BlueprintType"] = "true"
                elif spec == "NotBlueprintType":
                    meta["BlueprintType"] = "false"
                elif spec == "Blueprintable":
                    meta["IsBlueprintBase"] = "true"
                    meta["BlueprintType"] = "true"
                elif spec == "NotBlueprintable":
                    meta["IsBlueprintBase"] = "false"
                    meta.pop("BlueprintType", None)
                elif spec == "HideCategories":
                    hide.extend(v for v in values if v not in hide)
                elif spec == "ShowCategories":
                    show.extend(v for v in values if v not in show)
                elif spec == "ClassGroup":
                    groups.extend(values)
                elif spec == "CustomFieldNotify":
                    pass
                else:
                    self.error("class %s: unknown specifier %s" % (entry["cpp"], spec_text))
            if hide:
                meta["HideCategories"] = " ".join(hide)
            if show:
                meta["ShowCategories"] = " ".join(show)
            if groups:
                meta["ClassGroupNames"] = " ".join(groups)
            for key, value in record["meta"].items():
                meta[key] = _meta_value(value)
            for base in record.get("interfaces") or []:
                if base in NOT_REFLECTED_BASES:
                    continue
                cpp = "U" + base
                if cpp not in cat.classes or not cat.is_interface(cpp):
                    self.error("class %s: unknown interface %s" % (entry["cpp"], base))
                    continue
                interfaces.append(cat.class_path(cpp))
        # Inherited flags and config name, as the header tool propagates them.
        super_cpp = entry["super"]
        if super_cpp is not None and cat.classes[super_cpp]["source"] != "native":
            inherited = self.final_class_flags(super_cpp)
            _add_flags(flags, [f for f in inherited if f in CLASS_SCRIPT_INHERIT])
            if config is None and "Config" in flags:
                config = self.class_config(super_cpp)
        if cat.is_interface(entry["cpp"]):
            _add_flags(flags, ["Interface", "Abstract"])
        if config and "Config" in flags:
            out["config"] = config
        if within:
            within_cpp = cat.engine_class_names.get(within)
            if within_cpp is None:
                self.error("class %s: unknown Within class %s" % (entry["cpp"], within))
            else:
                out["within"] = cat.class_path(within_cpp)
        out["flags"] = flags
        if interfaces:
            out["interfaces"] = interfaces
        if meta:
            out["meta"] = dict(sorted(meta.items()))
        properties = []
        functions = []
        for member in members:
            if member["kind"] == "property":
                built = self.build_member(member, entry["cpp"], False)
                if built is not None:
                    properties.append(built)
            elif member["kind"] == "function":
                built = self.build_function(member, entry["cpp"])
                if built is not None:
                    functions.append(built)
        if properties:
            out["properties"] = properties
        if functions:
            out["functions"] = functions
        if entry["minimal"]:
            out["minimal"] = True
        return out

    def final_class_flags(self, cpp):
        entry = self.cat.classes[cpp]
        flags = list(entry["flags"])
        record = entry["record"]
        if record is not None:
            for spec_text in record["specifiers"]:
                spec = spec_text.partition("=")[0]
                if spec in CLASS_SPECIFIER_FLAGS:
                    _add_flags(flags, CLASS_SPECIFIER_FLAGS[spec])
                elif spec == "Config":
                    _add_flags(flags, ["Config"])
        removed = set()
        if record is not None:
            for spec_text in record["specifiers"]:
                spec = spec_text.partition("=")[0]
                if spec in CLASS_SPECIFIER_REMOVES:
                    removed.add(CLASS_SPECIFIER_REMOVES[spec])
        if entry["super"] is not None and self.cat.classes[entry["super"]]["source"] != "native":
            _add_flags(flags, [f for f in self.final_class_flags(entry["super"]) if f in CLASS_SCRIPT_INHERIT])
        return [f for f in flags if f not in removed]

    def class_config(self, cpp):
        entry = self.cat.classes[cpp]
        record = entry["record"]
        if record is not None:
            for spec_text in record["specifiers"]:
                spec, _, value = spec_text.partition("=")
                if spec == "Config":
                    return value.strip()
        if entry["super"] is not None:
            return self.class_config(entry["super"])
        return None

    # ---- whole catalogue -----------------------------------------------------------
    def build(self):
        cat = self.cat
        members_by_class = {}
        for _rel, record in cat.records:
            if record["kind"] in ("property", "function"):
                owner = cat.engine_class_names.get(record["class"])
                if owner is None:
                    self.error("%s %s: unknown class %s" % (record["kind"], record["name"], record["class"]))
                    continue
                members_by_class.setdefault(owner, []).append(record)
        for cpp, functions in CORE_NATIVE_FUNCTIONS.items():
            members_by_class.setdefault(cpp, []).extend(functions)
        # Enums and structs in declaration order, then the minimal ones by name.
        for _rel, record in cat.records:
            if record["kind"] == "enum":
                entry = cat.enums[record["name"]]
                self.module(entry["module"])["enums"].append(self.build_enum(entry))
            elif record["kind"] == "struct":
                entry = cat.structs[record["cpp"]]
                self.module(entry["module"])["structs"].append(self.build_struct(entry))
            elif record["kind"] == "delegate":
                entry = cat.delegates[record["name"]]
                built = self.build_delegate(entry)
                if built is not None:
                    self.module(entry["module"])["delegates"].append(built)
        for name in sorted(MINIMAL_ENUMS):
            entry = cat.enums[name]
            if entry["minimal"]:
                self.module(entry["module"])["enums"].append(self.build_enum(entry))
        for cpp in sorted(MINIMAL_STRUCTS):
            entry = cat.structs[cpp]
            if entry["minimal"]:
                self.module(entry["module"])["structs"].append(self.build_struct(entry))
        for name in sorted(MINIMAL_DELEGATES):
            entry = cat.delegates[name]
            if entry["minimal"]:
                built = self.build_delegate(entry)
                if built is not None:
                    self.module(entry["module"])["delegates"].append(built)
        # Classes: supers before subclasses, otherwise by path, so a loader can create them in order.
        ordered = []
        visited = set()

        def visit(cpp):
            if cpp in visited:
                return
            visited.add(cpp)
            super_cpp = cat.classes[cpp]["super"]
            if super_cpp is not None:
                visit(super_cpp)
            ordered.append(cpp)

        for cpp in sorted(cat.classes, key=lambda c: cat.class_path(c)):
            visit(cpp)
        for cpp in ordered:
            entry = cat.classes[cpp]
            built = self.build_class(entry, members_by_class.get(cpp, []))
            self.module(entry["module"])["classes"].append(built)
        unknown_modules = set(self.modules) - set(MODULE_ORDER)
        if unknown_modules:
            self.error("modules missing from the load order: %s" % ", ".join(sorted(unknown_modules)))


class AdvancedDisplay:
    """Which parameters the AdvancedDisplay metadata moves to the advanced section."""

    def __init__(self, value):
        self.names = None
        self.leave = -1
        self.use_number = False
        self.left = 0
        if value is not None:
            self.names = [n.strip() for n in value.split(",") if n.strip()]
            if len(self.names) == 1 and re.fullmatch(r"-?\d+", self.names[0]):
                self.use_number = True
                self.leave = int(self.names[0])

    def should_mark(self, name):
        if self.use_number:
            if self.leave <= 0:
                return False
            if self.left < self.leave:
                self.left += 1
                return False
            return True
        if not self.names:
            return False
        return any(name.lower() == n.lower() for n in self.names)


def _eval_enum_expression(text, known, enum_name):
    tokens = re.findall(r"0[xX][0-9a-fA-F]+|\d+|[A-Za-z_][A-Za-z0-9_]*|<<|\||-", text)
    if "".join(tokens) != re.sub(r"\s+", "", text):
        raise CatalogueError("enum %s: cannot evaluate '%s'" % (enum_name, text))

    def operand(token):
        if token in known:
            return known[token]
        if re.fullmatch(r"0[xX][0-9a-fA-F]+", token):
            return int(token, 16)
        if token.isdigit():
            return int(token)
        raise CatalogueError("enum %s: unknown name '%s' in '%s'" % (enum_name, token, text))

    # Grammar: term ('|' term)*, term := ['-'] operand ['<<' operand]
    index = 0
    result = 0
    while index < len(tokens):
        negative = False
        if tokens[index] == "-":
            negative = True
            index += 1
        value = operand(tokens[index])
        index += 1
        if index < len(tokens) and tokens[index] == "<<":
            value = value << operand(tokens[index + 1])
            index += 2
        result |= -value if negative else value
        if index < len(tokens):
            if tokens[index] != "|":
                raise CatalogueError("enum %s: cannot evaluate '%s'" % (enum_name, text))
            index += 1
    return result


# --------------------------------------------------------------------------------------
# Output
# --------------------------------------------------------------------------------------

def render_module(name, content):
    """One JSON document per module; one entry per line keeps diffs readable."""
    lines = ['{"format":"%s","version":%d,"module":%s,' % (FORMAT_NAME, FORMAT_VERSION, json.dumps(name))]
    sections = ["enums", "structs", "delegates", "classes"]
    for section_index, section in enumerate(sections):
        items = content[section]
        tail = "," if section_index + 1 < len(sections) else ""
        if not items:
            lines.append('"%s":[]%s' % (section, tail))
            continue
        lines.append('"%s":[' % section)
        for index, item in enumerate(items):
            text = json.dumps(item, ensure_ascii=False, separators=(",", ":"))
            lines.append(text + ("," if index + 1 < len(items) else ""))
        lines.append("]" + tail)
    lines.append("}")
    return "\n".join(lines) + "\n"


def main(argv):
    here = os.path.dirname(os.path.abspath(__file__))
    repo = os.path.normpath(os.path.join(here, "..", ".."))
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("facts", nargs="?", default=os.path.normpath(os.path.join(repo, "..", "shared", "engine-api")),
                        help="folder holding the *.jsonl facts (default: ../shared/engine-api beside the repository)")
    parser.add_argument("--out", default=os.path.join(repo, "Headless", "Catalogue", "Data"),
                        help="folder receiving <Module>.json")
    parser.add_argument("--check", action="store_true",
                        help="compare with the files on disk instead of writing; exit 1 when they differ")
    args = parser.parse_args(argv)

    try:
        catalogue = Catalogue(args.facts)
        catalogue.load()
        builder = Builder(catalogue)
        builder.build()
    except CatalogueError as error:
        print("error: %s" % error, file=sys.stderr)
        return 2
    for warning in catalogue.warnings:
        print("warning: %s" % warning, file=sys.stderr)
    if catalogue.errors:
        for message in catalogue.errors:
            print("error: %s" % message, file=sys.stderr)
        print("%d error(s); nothing written" % len(catalogue.errors), file=sys.stderr)
        return 1

    outputs = {}
    for module in MODULE_ORDER:
        if module in builder.modules:
            outputs[module + ".json"] = render_module(module, builder.modules[module])
    manifest = "".join(name[:-5] + "\n" for name in outputs)
    outputs["Modules.txt"] = manifest

    differing = []
    for name, text in outputs.items():
        path = os.path.join(args.out, name)
        current = None
        if os.path.exists(path):
            with open(path, encoding="utf-8") as handle:
                current = handle.read()
        if current != text:
            differing.append(name)
            if not args.check:
                os.makedirs(args.out, exist_ok=True)
                with open(path, "w", encoding="utf-8", newline="\n") as handle:
                    handle.write(text)
    stale = [n for n in os.listdir(args.out) if n.endswith(".json") and n not in outputs] if os.path.isdir(args.out) else []
    if args.check:
        if differing or stale:
            print("catalogue out of date: %s" % ", ".join(differing + stale), file=sys.stderr)
            return 1
        return 0
    for name in stale:
        os.remove(os.path.join(args.out, name))
    counts = {s: sum(len(m[s]) for m in builder.modules.values()) for s in ("enums", "structs", "delegates", "classes")}
    functions = sum(len(c.get("functions", [])) for m in builder.modules.values() for c in m["classes"])
    print("catalogue: %d modules, %d classes, %d functions, %d structs, %d enums, %d delegates; %d file(s) changed"
          % (len(outputs) - 1, counts["classes"], functions, counts["structs"], counts["enums"], counts["delegates"],
             len(differing)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
