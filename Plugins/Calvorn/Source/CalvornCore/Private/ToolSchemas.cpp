#include "ToolSchemas.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "ToolInfo.h"

// The schemas say what each tool reads from its request, as an agent needs to know it: the fields,
// which are required, their JSON types, and what they do. Words the tools compare without case are
// listed in their lower-case spelling.
namespace Calvorn::ToolInfo
{
	namespace
	{
		using FSchema = TSharedPtr<FJsonObject>;

		struct FField
		{
			const TCHAR* Name;
			FSchema Schema;
		};

		FSchema Typed(const TCHAR* Type, const TCHAR* Description)
		{
			FSchema Schema = MakeShared<FJsonObject>();
			Schema->SetStringField(TEXT("type"), Type);
			if (Description && *Description)
			{
				Schema->SetStringField(TEXT("description"), Description);
			}
			return Schema;
		}

		FSchema String(const TCHAR* Description)
		{
			return Typed(TEXT("string"), Description);
		}

		FSchema NonEmptyString(const TCHAR* Description)
		{
			FSchema Schema = String(Description);
			Schema->SetNumberField(TEXT("minLength"), 1);
			return Schema;
		}

		FSchema Boolean(const TCHAR* Description)
		{
			return Typed(TEXT("boolean"), Description);
		}

		FSchema Number(const TCHAR* Description)
		{
			return Typed(TEXT("number"), Description);
		}

		FSchema Integer(const TCHAR* Description)
		{
			return Typed(TEXT("integer"), Description);
		}

		TArray<TSharedPtr<FJsonValue>> StringValues(std::initializer_list<const TCHAR*> Words)
		{
			TArray<TSharedPtr<FJsonValue>> Values;
			for (const TCHAR* Word : Words)
			{
				Values.Add(MakeShared<FJsonValueString>(Word));
			}
			return Values;
		}

		FSchema Enum(const TCHAR* Description, std::initializer_list<const TCHAR*> Words)
		{
			FSchema Schema = String(Description);
			Schema->SetArrayField(TEXT("enum"), StringValues(Words));
			return Schema;
		}

		/** A value that may be given as any of several JSON types. */
		FSchema AnyOfTypes(const TCHAR* Description, std::initializer_list<const TCHAR*> Types)
		{
			FSchema Schema = MakeShared<FJsonObject>();
			Schema->SetArrayField(TEXT("type"), StringValues(Types));
			Schema->SetStringField(TEXT("description"), Description);
			return Schema;
		}

		FSchema Array(const TCHAR* Description, const FSchema& Items, int32 MinItems = 0)
		{
			FSchema Schema = Typed(TEXT("array"), Description);
			Schema->SetObjectField(TEXT("items"), Items);
			if (MinItems > 0)
			{
				Schema->SetNumberField(TEXT("minItems"), MinItems);
			}
			return Schema;
		}

		FSchema Object(const TCHAR* Description, std::initializer_list<FField> Fields, std::initializer_list<const TCHAR*> Required = {})
		{
			FSchema Schema = Typed(TEXT("object"), Description);
			FSchema Properties = MakeShared<FJsonObject>();
			for (const FField& Field : Fields)
			{
				Properties->SetObjectField(Field.Name, Field.Schema);
			}
			Schema->SetObjectField(TEXT("properties"), Properties);
			if (Required.size() > 0)
			{
				Schema->SetArrayField(TEXT("required"), StringValues(Required));
			}
			return Schema;
		}

		/** An object whose keys are names the client chooses, each holding a value of the given schema. */
		FSchema NameMap(const TCHAR* Description, const FSchema& ValueSchema)
		{
			FSchema Schema = Typed(TEXT("object"), Description);
			Schema->SetObjectField(TEXT("additionalProperties"), ValueSchema);
			return Schema;
		}

		/** The root of a tool's schema. */
		FSchema Root(const TCHAR* Description, std::initializer_list<FField> Fields, std::initializer_list<const TCHAR*> Required)
		{
			FSchema Schema = Object(Description, Fields, Required);
			FSchema Rooted = MakeShared<FJsonObject>();
			Rooted->SetStringField(TEXT("$schema"), TEXT("https://json-schema.org/draft/2020-12/schema"));
			for (const auto& Pair : Schema->Values)
			{
				Rooted->SetField(Pair.Key, Pair.Value);
			}
			return Rooted;
		}

		/** Requires at least one of the named fields (JSON Schema "anyOf" of single requirements). */
		void RequireAnyOf(const FSchema& Schema, std::initializer_list<const TCHAR*> Names)
		{
			TArray<TSharedPtr<FJsonValue>> Alternatives;
			for (const TCHAR* Name : Names)
			{
				FSchema Alternative = MakeShared<FJsonObject>();
				Alternative->SetArrayField(TEXT("required"), StringValues({Name}));
				Alternatives.Add(MakeShared<FJsonValueObject>(Alternative));
			}
			Schema->SetArrayField(TEXT("anyOf"), Alternatives);
		}

		// ---- Pieces shared by several tools ----------------------------------------------------

		FSchema BlueprintPath()
		{
			return NonEmptyString(TEXT("Asset path of the Blueprint, e.g. \"/Game/Blueprints/BP_Door\" (the form \"/Game/Blueprints/BP_Door.BP_Door\" is accepted too)."));
		}

		FSchema ItemAction(const TCHAR* Description)
		{
			return Enum(Description, {TEXT("add"), TEXT("modify"), TEXT("remove")});
		}

		FSchema PinType(const TCHAR* Description)
		{
			return Object(Description, {
				{TEXT("category"), String(TEXT("Pin category: bool, byte, int, int64, float, double, real, name, string, text, object, class, softobject, softclass, interface, struct, enum, exec, wildcard, delegate, mcdelegate. \"float\" and \"double\" become a real number of that precision."))},
				{TEXT("sub_category"), String(TEXT("Sub-category of the pin type, where the category needs one (usually left empty)."))},
				{TEXT("sub_category_object"), String(TEXT("The class, struct or enum of object, class, struct and enum pins, by path (\"/Script/Engine.Actor\", \"/Script/CoreUObject.Vector\") or by name."))},
				{TEXT("container_type"), Enum(TEXT("Container of the value; omit for a single value."), {TEXT("none"), TEXT("array"), TEXT("set"), TEXT("map")})},
				{TEXT("container"), String(TEXT("Same as container_type, read only when container_type is absent."))},
				{TEXT("is_reference"), Boolean(TEXT("Passed by reference."))},
				{TEXT("is_const"), Boolean(TEXT("Constant value."))},
				{TEXT("is_weak_pointer"), Boolean(TEXT("Weak object reference."))},
				{TEXT("is_u_object_wrapper"), Boolean(TEXT("Object held through a wrapper type such as TSubclassOf."))},
				{TEXT("value_type"), Object(TEXT("For a map: the type of its values (its keys use the fields above)."), {
					{TEXT("category"), String(TEXT("Pin category of the map's values."))},
					{TEXT("sub_category"), String(TEXT("Sub-category of the map's values."))},
					{TEXT("sub_category_object"), String(TEXT("Class, struct or enum of the map's values."))},
				})},
			}, {TEXT("category")});
		}

		FSchema DefaultValue(const TCHAR* Description)
		{
			return AnyOfTypes(Description, {TEXT("string"), TEXT("number"), TEXT("boolean")});
		}

		FSchema LocalVariables()
		{
			return NameMap(TEXT("Local variables of the function graph, keyed by variable name. They are applied before any node, so variable nodes can use them. Not available in event graphs."),
				Object(TEXT("One local variable."), {
					{TEXT("action"), ItemAction(TEXT("What to do with the variable; default \"add\"."))},
					{TEXT("type"), PinType(TEXT("The variable's type; required to add, optional to modify, ignored to remove."))},
					{TEXT("default_variable_value"), DefaultValue(TEXT("Default value; numbers and booleans are turned into text."))},
				}));
		}

		FSchema FunctionParameter()
		{
			return Object(TEXT("One parameter."), {
				{TEXT("name"), NonEmptyString(TEXT("Parameter name."))},
				{TEXT("direction"), Enum(TEXT("\"input\" (default) for an input, \"output\" for a value the function returns."), {TEXT("input"), TEXT("output")})},
				{TEXT("type"), PinType(TEXT("Parameter type."))},
			}, {TEXT("name"), TEXT("type")});
		}

		/** A return value: a pin type, or a named value holding one under "type". */
		FSchema ReturnType()
		{
			FSchema Schema = PinType(TEXT("Type of the return value, as a pin type or as {\"name\": ..., \"type\": {pin type}}; omit for none. A type that cannot be read leaves a plain result node and a warning."));
			Schema->RemoveField(TEXT("required"));
			Schema->GetObjectField(TEXT("properties"))->SetObjectField(TEXT("name"), String(TEXT("Name of the return value.")));
			Schema->GetObjectField(TEXT("properties"))->SetObjectField(TEXT("type"), PinType(TEXT("The return value's type, when it is given with a name.")));
			return Schema;
		}

		FSchema GraphNodeConnection(const TCHAR* Description, const TCHAR* ActionDescription)
		{
			return Object(Description, {
				{TEXT("action"), Enum(ActionDescription, {TEXT("add"), TEXT("remove")})},
				{TEXT("source_node_guid"), NonEmptyString(TEXT("The node the link starts from (the output side): a node_guid given in this request, or the first 7 characters of an existing node's guid."))},
				{TEXT("source_pin_name"), NonEmptyString(TEXT("Output pin on the source node."))},
				{TEXT("target_node_guid"), NonEmptyString(TEXT("The node the link goes to (the input side), named as the source is."))},
				{TEXT("target_pin_name"), NonEmptyString(TEXT("Input pin on the target node."))},
			}, {TEXT("source_node_guid"), TEXT("source_pin_name"), TEXT("target_node_guid"), TEXT("target_pin_name")});
		}

		FSchema WidgetEntry(bool bRequireAction)
		{
			FSchema Entry = Object(TEXT("One widget: created, changed, moved or removed."), {
				{TEXT("action"), Enum(TEXT("\"add\" creates the widget, \"modify\" changes an existing one, \"reorder\" moves it under \"parent\" at \"index\", \"remove\" deletes it."), {TEXT("add"), TEXT("modify"), TEXT("remove"), TEXT("reorder")})},
				{TEXT("name"), NonEmptyString(TEXT("Widget name; also its variable name. Must not start with a digit."))},
				{TEXT("class"), String(TEXT("Widget class for a new widget: \"Button\", \"TextBlock\", \"VerticalBox\"..., a class path (\"/Script/UMG.Button\") or a Widget Blueprint's name."))},
				{TEXT("parent"), String(TEXT("Name of the panel widget that holds this one."))},
				{TEXT("index"), Integer(TEXT("Place among the parent's children for \"reorder\"; -1 or absent puts it last."))},
				{TEXT("is_variable"), Boolean(TEXT("Whether the widget is exposed as a variable of the Blueprint."))},
				{TEXT("events"), Array(TEXT("Events of the widget to create handler nodes for, e.g. \"OnClicked\"."), String(TEXT("Event name.")))},
				{TEXT("properties"), Typed(TEXT("object"), TEXT("Widget properties by name, with values in text or JSON form."))},
				{TEXT("slot"), Typed(TEXT("object"), TEXT("Properties of the widget's slot in its parent (anchors, padding, alignment...)."))},
			}, {TEXT("name")});
			if (bRequireAction)
			{
				Entry->SetArrayField(TEXT("required"), StringValues({TEXT("action"), TEXT("name")}));
			}
			return Entry;
		}

		// ---- Tools ------------------------------------------------------------------------------

		FSchema ReadItemTool(const TCHAR* Description, const TCHAR* NameField, const TCHAR* NameDescription)
		{
			return Root(Description, {
				{FieldName_Path, BlueprintPath()},
				{NameField, NonEmptyString(NameDescription)},
			}, {FieldName_Path, NameField});
		}

		FSchema ReadSchemaTool()
		{
			return Root(TEXT("Reads the whole Blueprint: parent class, variables, components, functions, macros, delegates, event graphs, timelines, interfaces."), {
				{FieldName_Path, BlueprintPath()},
			}, {FieldName_Path});
		}

		FSchema ReadEventTool()
		{
			return Root(TEXT("Reads one event of an event graph with the nodes it drives."), {
				{FieldName_Path, BlueprintPath()},
				{FieldName_GraphName, NonEmptyString(TEXT("Event graph that holds the event, e.g. \"EventGraph\"."))},
				{FieldName_EventName, NonEmptyString(TEXT("Title of the event, e.g. \"Event BeginPlay\" or a custom event's name."))},
			}, {FieldName_Path, FieldName_GraphName, FieldName_EventName});
		}

		FSchema WidgetNames()
		{
			FSchema Schema = AnyOfTypes(TEXT("Name of a widget, or an array of names, whose properties and slot to include."), {TEXT("string"), TEXT("array")});
			Schema->SetObjectField(TEXT("items"), String(TEXT("Widget name.")));
			return Schema;
		}

		FSchema ReadWidgetTreeTool()
		{
			return Root(TEXT("Reads a Widget Blueprint's widget tree; with widget_name also the details of those widgets."), {
				{FieldName_Path, BlueprintPath()},
				{FieldName_WidgetName, WidgetNames()},
			}, {FieldName_Path});
		}

		FSchema ClassStructureTool()
		{
			FSchema Variable = Object(TEXT("Changes to one variable; the key is its name."), {
				{TEXT("action"), ItemAction(TEXT("Default \"modify\". \"remove\" is refused while nodes still use the variable."))},
				{TEXT("type"), PinType(TEXT("The variable's type; required for \"add\"."))},
				{TEXT("default_variable_value"), DefaultValue(TEXT("Default value in the class defaults. The only change allowed on an inherited variable."))},
				{TEXT("category"), String(TEXT("Category shown in the editor."))},
				{TEXT("tooltip"), String(TEXT("Tooltip text."))},
				{TEXT("replication"), Enum(TEXT("Network replication."), {TEXT("none"), TEXT("replicated"), TEXT("rep_notify")})},
				{TEXT("instance_editable"), AnyOfTypes(TEXT("Editable on instances (true/false, as boolean or text)."), {TEXT("boolean"), TEXT("string")})},
				{TEXT("expose_on_spawn"), AnyOfTypes(TEXT("Shown as a pin when the class is spawned (true/false)."), {TEXT("boolean"), TEXT("string")})},
				{TEXT("private"), AnyOfTypes(TEXT("Hidden from other Blueprints (true/false)."), {TEXT("boolean"), TEXT("string")})},
				{TEXT("save_game"), AnyOfTypes(TEXT("Saved with SaveGame serialisation (true/false)."), {TEXT("boolean"), TEXT("string")})},
				{TEXT("blueprint_read_only"), AnyOfTypes(TEXT("Read-only in graphs (true/false)."), {TEXT("boolean"), TEXT("string")})},
				{TEXT("config"), AnyOfTypes(TEXT("Read from config files (true/false)."), {TEXT("boolean"), TEXT("string")})},
			});

			FSchema Vector = Object(TEXT("A vector."), {{TEXT("x"), Number(nullptr)}, {TEXT("y"), Number(nullptr)}, {TEXT("z"), Number(nullptr)}}, {TEXT("x"), TEXT("y"), TEXT("z")});
			FSchema Rotator = Object(TEXT("A rotation in degrees."), {{TEXT("pitch"), Number(nullptr)}, {TEXT("yaw"), Number(nullptr)}, {TEXT("roll"), Number(nullptr)}}, {TEXT("pitch"), TEXT("yaw"), TEXT("roll")});
			FSchema ComponentProperties = Object(TEXT("Settings of the component; other keys set the component's properties by name, with values as text."), {
				{TEXT("relative_location"), Vector},
				{TEXT("relative_rotation"), Rotator},
				{TEXT("relative_scale_3d"), Vector},
				{TEXT("mobility"), Enum(TEXT("Mobility of a scene component."), {TEXT("Static"), TEXT("Stationary"), TEXT("Movable")})},
				{TEXT("attach_to"), String(TEXT("Name of the component to attach this one to."))},
			});
			FSchema Component = Object(TEXT("One component of the construction script."), {
				{TEXT("name"), NonEmptyString(TEXT("Variable name of the component."))},
				{TEXT("action"), ItemAction(TEXT("What to do with the component."))},
				{TEXT("type"), String(TEXT("Component class for \"add\", e.g. \"StaticMeshComponent\" or \"/Script/Engine.PointLightComponent\"."))},
				{TEXT("properties"), ComponentProperties},
			}, {TEXT("name")});

			FSchema Interface = Object(TEXT("One implemented interface. Additions run before removals, so one request can swap interfaces."), {
				{TEXT("name"), NonEmptyString(TEXT("Interface class by name or path. For \"remove\" part of the name is enough."))},
				{TEXT("action"), ItemAction(TEXT("\"add\" or \"remove\"; \"modify\" changes nothing."))},
			}, {TEXT("name")});

			FSchema Point = Object(TEXT("One key of a curve."), {
				{TEXT("time"), Number(TEXT("Time of the key in seconds."))},
				{TEXT("value"), AnyOfTypes(TEXT("A number for float curves, {\"x\",\"y\",\"z\"} for vector curves, {\"R\",\"G\",\"B\",\"A\"} for linear colour curves."), {TEXT("number"), TEXT("object")})},
			}, {TEXT("time"), TEXT("value")});
			FSchema Curve = Object(TEXT("One curve track of the timeline."), {
				{TEXT("name"), NonEmptyString(TEXT("Track name."))},
				{TEXT("action"), Enum(TEXT("\"add\" a new track or \"modify\" an existing one."), {TEXT("add"), TEXT("modify")})},
				{TEXT("type"), Enum(TEXT("Kind of track for \"add\"."), {TEXT("Float"), TEXT("Vector"), TEXT("LinearColor")})},
				{TEXT("clear_keys"), Boolean(TEXT("Remove the existing keys before adding points."))},
				{TEXT("points"), Array(TEXT("Keys to add."), Point)},
			}, {TEXT("name")});
			FSchema Timeline = Object(TEXT("One timeline."), {
				{TEXT("name"), NonEmptyString(TEXT("Timeline name."))},
				{TEXT("action"), ItemAction(TEXT("What to do with the timeline."))},
				{TEXT("length"), Number(TEXT("Length in seconds."))},
				{TEXT("b_loop"), Boolean(TEXT("Whether it loops."))},
				{TEXT("b_replicated"), Boolean(TEXT("Whether it replicates."))},
				{TEXT("curves"), Array(TEXT("Tracks to add or change."), Curve)},
			}, {TEXT("name")});

			FSchema Delegate = Object(TEXT("One event dispatcher. Removals run first, so one request can recreate a name."), {
				{TEXT("name"), NonEmptyString(TEXT("Dispatcher name."))},
				{TEXT("action"), ItemAction(TEXT("What to do with the dispatcher."))},
				{TEXT("signature"), Object(TEXT("The dispatcher's parameters."), {
					{TEXT("parameters"), Array(TEXT("Parameters of the signature."), FunctionParameter())},
				})},
			}, {TEXT("name")});

			FSchema Schema = Root(TEXT("Changes a Blueprint's variables, components, interfaces, timelines and event dispatchers. Each entry is applied on its own; give at least one of the five groups."), {
				{FieldName_Path, BlueprintPath()},
				{TEXT("variables"), NameMap(TEXT("Variables keyed by name."), Variable)},
				{FieldName_Components, Array(TEXT("Components to add, change or remove."), Component)},
				{FieldName_Interfaces, Array(TEXT("Interfaces to add or remove."), Interface)},
				{FieldName_Timelines, Array(TEXT("Timelines to add, change or remove."), Timeline)},
				{FieldName_Delegates, Array(TEXT("Event dispatchers to add, change or remove."), Delegate)},
			}, {FieldName_Path});
			RequireAnyOf(Schema, {TEXT("variables"), FieldName_Components, FieldName_Interfaces, FieldName_Timelines, FieldName_Delegates});
			return Schema;
		}

		FSchema ModifyWidgetTool()
		{
			FSchema Animation = Object(TEXT("One widget animation."), {
				{TEXT("action"), Enum(TEXT("Add or remove the animation."), {TEXT("add"), TEXT("remove")})},
				{TEXT("name"), NonEmptyString(TEXT("Animation name."))},
			}, {TEXT("action"), TEXT("name")});

			return Root(TEXT("Changes a Widget Blueprint's widget tree and animations."), {
				{FieldName_Path, NonEmptyString(TEXT("Asset path of the Widget Blueprint."))},
				{TEXT("widget_tree"), Object(TEXT("Changes to the tree: a root first, then the widget operations in order."), {
					{TEXT("root_widget"), WidgetEntry(false)},
					{TEXT("widgets"), Array(TEXT("Widget operations, applied in order; one that fails does not stop the others."), WidgetEntry(true))},
				})},
				{TEXT("animations"), Array(TEXT("Animations to add or remove."), Animation)},
			}, {FieldName_Path});
		}

		FSchema PopulateGraphTool()
		{
			FSchema Pin = Object(TEXT("A pin of the node."), {
				{TEXT("name"), NonEmptyString(TEXT("Pin name, as shown on the node or its internal name."))},
				{TEXT("action"), Enum(TEXT("\"modify\" with a value sets the pin's default value."), {TEXT("add"), TEXT("modify"), TEXT("remove")})},
				{TEXT("value"), String(TEXT("Default value in the editor's text form (\"1.5\", \"true\", \"(X=1,Y=2,Z=3)\")."))},
				{TEXT("type"), PinType(TEXT("Pin type, for nodes that take user-defined pins."))},
			});
			FSchema Node = Object(TEXT("A node to create. Give target_class and target_function for an exact function call, or describe it with menu_title (and class_name) for a search of the graph's action menu."), {
				{TEXT("node_guid"), String(TEXT("Your own id for the node within this request; connections refer to it."))},
				{TEXT("action"), Enum(TEXT("Only \"add\" creates nodes in this tool (the default)."), {TEXT("add")})},
				{TEXT("class_name"), String(TEXT("Node class, e.g. \"K2Node_CallFunction\", \"K2Node_CustomEvent\", \"K2Node_VariableGet\", \"K2Node_IfThenElse\"."))},
				{TEXT("menu_title"), String(TEXT("Title of the action in the editor's menu, e.g. \"Print String\" or \"Get Actor Location\"."))},
				{TEXT("target_class"), String(TEXT("Class that owns the function to call, e.g. \"KismetSystemLibrary\" or \"Actor\"."))},
				{TEXT("target_function"), String(TEXT("Name of the function to call, e.g. \"PrintString\"."))},
				{TEXT("menu_category"), String(TEXT("Menu category of the action, to narrow a search."))},
				{TEXT("node_metadata"), NameMap(TEXT("Extra settings as text: event_name (event nodes), allow_duplicate, variable_name (variable nodes), variable_source_class, property_owner_node_guid, owner_pin_name, minimum_confidence (0 to 1, default 0.6, for menu searches), spawn_method."), String(nullptr))},
				{TEXT("pins"), Array(TEXT("Pin values to set once the node exists."), Pin)},
			});
			FSchema Connection = GraphNodeConnection(TEXT("A link to make between two pins."), TEXT("Must be \"add\" (or \"create\") for the link to be made; other entries are ignored."));

			FSchema Schema = Root(TEXT("Adds nodes to a graph of a Blueprint and wires them. Give at least one of nodes and connections."), {
				{FieldName_Path, BlueprintPath()},
				{FieldName_GraphName, NonEmptyString(TEXT("Graph to fill: a function's name, or \"EventGraph\"."))},
				{TEXT("graph_type"), Enum(TEXT("\"event\" for an event graph (also implied by graph_name \"EventGraph\"); default \"function\"."), {TEXT("function"), TEXT("event")})},
				{TEXT("nodes"), Array(TEXT("Nodes to create; custom events are created first so calls to them can bind."), Node)},
				{TEXT("connections"), Array(TEXT("Links to make, in order, after the nodes exist."), Connection)},
				{TEXT("local_variables"), LocalVariables()},
			}, {FieldName_Path, FieldName_GraphName});
			RequireAnyOf(Schema, {TEXT("nodes"), TEXT("connections")});
			return Schema;
		}

		FSchema CreateGraphTool()
		{
			FSchema Function = Object(TEXT("A function or event dispatcher signature to create or update."), {
				{TEXT("name"), NonEmptyString(TEXT("Function or dispatcher name. A parent class's function of that name is overridden."))},
				{TEXT("is_delegate"), Boolean(TEXT("Create an event dispatcher's signature graph instead of a function."))},
				{TEXT("is_rep_notify"), Boolean(TEXT("The function is a replication notify."))},
				{TEXT("replicated_property"), String(TEXT("The replicated variable a notify function belongs to."))},
				{TEXT("parameters"), Array(TEXT("Parameters of the function."), FunctionParameter())},
				{TEXT("return_type"), ReturnType()},
			}, {TEXT("name")});

			return Root(TEXT("Creates or configures function graphs and event dispatcher signatures of a Blueprint, without nodes."), {
				{FieldName_Path, BlueprintPath()},
				{TEXT("functions"), Array(TEXT("Functions and dispatchers to create or update."), Function, 1)},
			}, {FieldName_Path, TEXT("functions")});
		}

		FSchema GraphModificationTool(const TCHAR* Description)
		{
			FSchema Pin = Object(TEXT("A pin change."), {
				{TEXT("name"), NonEmptyString(TEXT("Pin name."))},
				{TEXT("action"), ItemAction(TEXT("\"modify\" sets the value, \"add\" and \"remove\" change the pins of nodes that allow it; default \"add\"."))},
				{TEXT("value"), String(TEXT("New default value in the editor's text form."))},
				{TEXT("direction"), Enum(TEXT("Direction of a new pin. Function entry nodes only take output pins, function result nodes only input pins."), {TEXT("input"), TEXT("output")})},
				{TEXT("type"), PinType(TEXT("Type of a new pin."))},
			}, {TEXT("name")});
			FSchema Node = Object(TEXT("A change to an existing node."), {
				{TEXT("node_guid"), NonEmptyString(TEXT("The node: the first 7 characters of its guid as the read tools show it."))},
				{TEXT("action"), Enum(TEXT("\"modify\" or \"remove\" the node; \"add\" is not done by this tool."), {TEXT("modify"), TEXT("remove"), TEXT("add")})},
				{TEXT("class_name"), String(TEXT("Node class, for event nodes."))},
				{TEXT("menu_title"), String(TEXT("New title (custom events and math expressions only); must differ from the graph's name."))},
				{TEXT("comment"), String(TEXT("Node comment."))},
				{TEXT("position"), Object(TEXT("Position in the graph."), {{TEXT("x"), Integer(nullptr)}, {TEXT("y"), Integer(nullptr)}})},
				{TEXT("metadata"), NameMap(TEXT("Extra settings as text."), String(nullptr))},
				{TEXT("target_class"), String(TEXT("Class of a function the node should call."))},
				{TEXT("menu_category"), String(TEXT("Menu category."))},
				{TEXT("exact_match"), Boolean(TEXT("Match the title exactly."))},
				{TEXT("pins"), Array(TEXT("Pin changes."), Pin)},
			});
			FSchema Search = Object(TEXT("A node to look for."), {
				{TEXT("menu_title"), String(TEXT("Title of the node."))},
				{TEXT("class_name"), String(TEXT("Node class."))},
				{TEXT("menu_category"), String(TEXT("Menu category."))},
			});
			FSchema LocalVariable = Object(TEXT("One local variable."), {
				{TEXT("action"), ItemAction(TEXT("Default \"add\"."))},
				{TEXT("type"), PinType(TEXT("The variable's type."))},
				{TEXT("default_variable_value"), DefaultValue(TEXT("Default value."))},
			});

			return Root(Description, {
				{TEXT("action"), ItemAction(TEXT("What happens to the graph itself: \"modify\" (default) changes its nodes and links, \"remove\" deletes the graph."))},
				{FieldName_Path, BlueprintPath()},
				{FieldName_GraphName, NonEmptyString(TEXT("Graph that holds the nodes: a function's name, a macro's, or \"EventGraph\"."))},
				{TEXT("state_machine_name"), String(TEXT("Animation Blueprints: the state machine that holds the graph."))},
				{TEXT("from_state_name"), String(TEXT("Animation Blueprints: source state of a transition graph."))},
				{TEXT("to_state_name"), String(TEXT("Animation Blueprints: target state of a transition graph."))},
				{TEXT("is_pure"), Boolean(TEXT("Make the function pure (no execution pins) or not."))},
				{TEXT("nodes"), Array(TEXT("Node changes."), Node)},
				{TEXT("nodes_to_search"), Array(TEXT("Nodes to look for instead of node changes; when given, \"nodes\" is ignored."), Search)},
				{TEXT("connections"), Array(TEXT("Links to break (action \"remove\"); entries with all four ends named."), GraphNodeConnection(TEXT("A link between two pins."), TEXT("\"remove\" breaks the link; \"add\" entries are ignored by these tools.")))},
				{TEXT("local_variables"), NameMap(TEXT("Local variables of a function graph, keyed by name."), LocalVariable)},
			}, {FieldName_Path, FieldName_GraphName});
		}

		FSchema CreateAssetTool()
		{
			return Root(TEXT("Creates a Blueprint, Animation Blueprint, Widget Blueprint or Behavior Tree task; the kind follows the parent class."), {
				{FieldName_Path, NonEmptyString(TEXT("Asset path of the new Blueprint, e.g. \"/Game/Blueprints/BP_Door\"."))},
				{TEXT("blueprint_parent_class"), Object(TEXT("The parent class."), {
					{TEXT("type"), NonEmptyString(TEXT("\"blueprint\" when the parent is another Blueprint asset; \"native\" (or any other word) for a C++ class."))},
					{TEXT("parent_path"), NonEmptyString(TEXT("The parent: a Blueprint's asset path, or a class path such as \"/Script/Engine.Actor\" or \"/Script/UMG.UserWidget\"."))},
				}, {TEXT("type"), TEXT("parent_path")})},
			}, {FieldName_Path, TEXT("blueprint_parent_class")});
		}

		FSchema DeleteTool()
		{
			return Root(TEXT("Deletes a Blueprint asset. Refused while other assets reference it."), {
				{FieldName_Path, BlueprintPath()},
			}, {FieldName_Path});
		}

		FSchema CompileTool()
		{
			return Root(TEXT("Compiles Blueprints one after the other and saves those that compile."), {
				{TEXT("blueprint_paths"), Array(TEXT("Asset paths of the Blueprints to compile."), NonEmptyString(TEXT("Asset path of a Blueprint.")))},
			}, {TEXT("blueprint_paths")});
		}
	}

	TSharedPtr<FJsonObject> GetToolParameterSchema(const FString& ToolName)
	{
		const FString& Name = ToolName;
		if (Name == ToolName_ReadBlueprintSchema)
		{
			return ReadSchemaTool();
		}
		if (Name == ToolName_ReadBlueprintVariable)
		{
			return ReadItemTool(TEXT("Reads one variable: type, default value, category, replication and flags."), FieldName_VariableName, TEXT("Name of the variable."));
		}
		if (Name == ToolName_ReadBlueprintComponent)
		{
			return ReadItemTool(TEXT("Reads one component: class, parent, transform and children."), FieldName_ComponentName, TEXT("Variable name of the component."));
		}
		if (Name == ToolName_ReadBlueprintFunction)
		{
			return ReadItemTool(TEXT("Reads one function with its graph of nodes and links."), FieldName_FunctionName, TEXT("Name of the function."));
		}
		if (Name == ToolName_ReadBlueprintInterface)
		{
			return ReadItemTool(TEXT("Reads one implemented interface with its graphs."), FieldName_InterfaceName, TEXT("Name of the interface class."));
		}
		if (Name == ToolName_ReadBlueprintEvent)
		{
			return ReadEventTool();
		}
		if (Name == ToolName_ReadBlueprintTimeline)
		{
			return ReadItemTool(TEXT("Reads one timeline with its tracks and settings."), FieldName_TimelineName, TEXT("Name of the timeline."));
		}
		if (Name == ToolName_ReadBlueprintDelegate)
		{
			return ReadItemTool(TEXT("Reads one event dispatcher's signature graph."), FieldName_DelegateName, TEXT("Name of the event dispatcher."));
		}
		if (Name == ToolName_ReadBlueprintMacro)
		{
			return ReadItemTool(TEXT("Reads one macro with its graph."), FieldName_MacroName, TEXT("Name of the macro."));
		}
		if (Name == ToolName_ReadBlueprintWidgetTree)
		{
			return ReadWidgetTreeTool();
		}
		if (Name == ToolName_ModifyBlueprintClassStructure)
		{
			return ClassStructureTool();
		}
		if (Name == ToolName_UIModifyWidgetBP)
		{
			return ModifyWidgetTool();
		}
		if (Name == ToolName_BPPopulateGraph)
		{
			return PopulateGraphTool();
		}
		if (Name == ToolName_BPCreateGraph)
		{
			return CreateGraphTool();
		}
		if (Name == ToolName_BPModifyGraphNodes)
		{
			return GraphModificationTool(TEXT("Changes or removes existing nodes of a graph: titles, comments, pins and pin values; also breaks links and edits local variables."));
		}
		if (Name == ToolName_BPRemoveGraphConnections)
		{
			return GraphModificationTool(TEXT("Breaks links between nodes of a graph without recreating the nodes."));
		}
		if (Name == ToolName_BPCreateAsset)
		{
			return CreateAssetTool();
		}
		if (Name == ToolName_DeleteBlueprint)
		{
			return DeleteTool();
		}
		if (Name == ToolName_CompileBlueprint)
		{
			return CompileTool();
		}
		return nullptr;
	}
}
