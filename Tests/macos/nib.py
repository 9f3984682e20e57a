"""What Interface Builder would find wrong with a nib's source: `faults(tree, classes)` lists it.

Interface Builder writes an attribute only when its value is not the one that the object is born with, writes references
by identifiers of one form, and gives an identifier to objects and connections alone. A file that keeps to it opens in
Xcode's editor and comes out of it as it went in."""

import re
from pathlib import Path

# Objects, and the attributes that an object of the kind is written with, beside its identifier, key, class and label. A
# switch is followed by the one value that it is ever written with.
VIEW = {"fixedFrame=YES", "translatesAutoresizingMaskIntoConstraints=NO", "hidden=YES", "tag", "toolTip",
        "wantsLayer=YES", "horizontalHuggingPriority", "verticalHuggingPriority", "customClass"}
CELL = {"alignment", "lineBreakMode", "state", "tag", "title", "enabled=NO", "editable=YES", "selectable=YES",
        "refusesFirstResponder=YES", "borderStyle", "sendsActionOnEndEditing=YES", "customClass"}
BUTTON = CELL | {"type", "bezelStyle", "image", "imagePosition", "imageScaling", "inset", "keyEquivalent"}
OBJECTS = {
    "customObject": {"customClass", "userLabel"},
    "customView": VIEW,
    "imageView": VIEW,
    "textField": VIEW,
    "button": VIEW,
    "matrix": VIEW | {"mode", "allowsEmptySelection=NO", "autosizesCells=NO", "autorecalculatesCellSize=YES"},
    "scrollView": VIEW | {"autohidesScrollers=YES", "borderType", "hasHorizontalScroller=NO", "hasVerticalScroller=NO",
                          "horizontalLineScroll", "horizontalPageScroll", "verticalLineScroll", "verticalPageScroll",
                          "usesPredominantAxisScrolling=NO"},
    "clipView": VIEW | {"drawsBackground=NO"},
    "scroller": VIEW | {"horizontal", "doubleValue", "controlSize"},
    "tableView": VIEW | {"allowsExpansionToolTips=YES", "alternatingRowBackgroundColors=YES", "columnAutoresizingStyle",
                         "columnReordering=NO", "columnResizing=NO", "columnSelection=YES", "multipleSelection=NO",
                         "emptySelection=NO", "autosaveColumns=NO", "typeSelect=NO", "rowHeight", "headerView"},
    "tableColumn": {"identifier", "editable=NO", "width", "minWidth", "maxWidth"},
    "progressIndicator": VIEW | {"maxValue", "minValue", "doubleValue", "bezeled=NO", "indeterminate=YES",
                                 "displayedWhenStopped=NO", "style", "controlSize"},
    "imageCell": CELL | {"image", "imageScaling", "imageFrameStyle"},
    # The two that say NO are what it would leave out; GNUstep takes a text for editable without them.
    "textFieldCell": CELL | {"drawsBackground=YES", "placeholderString", "editable=NO", "selectable=NO"},
    "buttonCell": BUTTON,
}
CONNECTIONS = {"outlet": {"property", "destination"}, "action": {"selector", "target"}}
# Values: what an object is set up with. They have no identifier.
VALUES = {
    "document": {"type", "version", "toolsVersion", "targetRuntime", "propertyAccessControl"},
    "dependencies": set(),
    "plugIn": {"identifier", "version"},
    "deployment": {"identifier", "version"},
    "objects": set(), "subviews": set(), "cells": set(), "column": set(), "tableColumns": set(), "connections": set(),
    "rect": {"x", "y", "width", "height"},
    "size": {"width", "height"},
    "autoresizingMask": {"flexibleMinX=YES", "widthSizable=YES", "flexibleMaxX=YES", "flexibleMinY=YES",
                         "heightSizable=YES", "flexibleMaxY=YES"},
    "font": {"metaFont", "name", "size"},
    "color": {"name", "catalog", "colorSpace", "red", "green", "blue", "alpha", "white"},
    "behavior": {f"{name}=YES" for name in ("changeBackground", "changeContents", "changeGray", "doesNotDimImage",
                                            "lightByBackground", "lightByContents", "lightByGray", "pushIn")},
    "tableHeaderCell": {"lineBreakMode", "borderStyle", "alignment", "title"},
    "tableColumnResizingMask": {"resizeWithTable=YES", "userResizable=YES"},
}
# What stands for the nib's owner, the responder chain and the application, in every nib.
PLACEHOLDERS = {"-1", "-2", "-3"}
# The class that a custom class on such an element must come from.
BASES = {"button": "NSButton", "textFieldCell": "NSTextFieldCell", "customView": "NSView", "customObject": "NSObject",
         "tableView": "NSTableView"}


class Declaration:
    """What a class says of itself in the headers: where it comes from, its outlets, its setters, its actions."""

    def __init__(self):
        self.base = None
        self.outlets = set()
        self.actions = set()


def declarations(folder):
    """The classes that the headers under the folder declare, their categories included, by name."""
    classes = {}
    for header in Path(folder).rglob("*.h"):
        text = re.sub(r"//[^\n]*|/\*.*?\*/", "", header.read_text(), flags=re.DOTALL)
        for name, base, body in re.findall(r"@interface (\w+)(?:\s*:\s*(\w+))?(.*?)@end", text, re.DOTALL):
            declared = classes.setdefault(name, Declaration())
            declared.base = base or declared.base
            declared.outlets |= set(re.findall(r"IBOutlet[^;]*?\*?\s*(\w+);", body))
            declared.outlets |= {setter[0].lower() + setter[1:] for setter in re.findall(r"\(void\)set(\w+):", body)}
            declared.actions |= set(re.findall(r"\(IBAction\)(\w+:)", body))
    return classes


def attribute_faults(element, allowed):
    for name, value in element.attrib.items():
        if name in ("id", "key"):
            continue
        if not {name, f"{name}={value}"} & allowed:
            yield f"<{element.tag} {element.get('id', '')}> is never written with {name}=\"{value}\""


def identifier_faults(elements):
    seen = set()
    for element in elements:
        identifier = element.get("id")
        if identifier is None:
            if element.tag in OBJECTS or element.tag in CONNECTIONS:
                yield f"a <{element.tag}> has no identifier"
            continue
        if element.tag in VALUES:
            yield f"a <{element.tag}> has no identifier in Interface Builder, here {identifier}"
        if identifier in seen:
            yield f"the identifier {identifier} stands twice"
        seen.add(identifier)
        if identifier not in PLACEHOLDERS and not re.fullmatch(r"\w{3}-\w{2}-\w{3}", identifier, re.ASCII):
            yield f"the identifier {identifier} is not of the form xxx-xx-xxx"


def class_faults(element, classes):
    name = element.get("customClass")
    base = BASES.get(element.tag)
    if name in (None, "FirstResponder", "NSObject"):
        return
    if name not in classes:
        yield f"no header declares the class {name}"
    elif classes[name].base != base:
        yield f"<{element.tag}> cannot be of class {name}, which comes from {classes[name].base}"


def connection_faults(element, owner, objects, classes):
    declared = classes.get(owner.get("customClass"))
    if element.tag == "outlet":
        if element.get("destination") not in objects:
            yield f"the outlet {element.get('property')} leads to {element.get('destination')}, which is not there"
        # Outlets of the platform's own classes, such as the next key view, are known to the platform.
        known = element.get("property") == "nextKeyView" or (declared and element.get("property") in declared.outlets)
        if not known:
            yield f"the class {owner.get('customClass')} declares no outlet {element.get('property')}"
        return
    target = objects.get(element.get("target"))
    if target is None:
        yield f"the action {element.get('selector')} goes to {element.get('target')}, which is not there"
    elif element.get("selector") not in getattr(classes.get(target.get("customClass")), "actions", ()):
        yield f"the class {target.get('customClass')} declares no action {element.get('selector')}"


def faults(root, classes):
    """Everything that is wrong with the nib, as sentences."""
    elements = list(root.iter())
    found = list(identifier_faults(elements))
    objects = {element.get("id"): element for element in elements if element.tag in OBJECTS}
    for element in elements:
        allowed = {**OBJECTS, **CONNECTIONS, **VALUES}.get(element.tag)
        if allowed is None:
            found.append(f"<{element.tag}> is not looked up yet: add it to this check")
            continue
        found += attribute_faults(element, allowed)
        found += class_faults(element, classes)
        for connection in element.findall("connections/*"):
            found += connection_faults(connection, element, objects, classes)
    return found
