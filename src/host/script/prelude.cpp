#include "prelude.h"

// The script side of the host, run once before the user's script. It keeps
// the host object in a closure so a script can reach the component only
// through the proxies and globals it installs, never through the raw host.
QString preludeSource()
{
    return QStringLiteral(R"JS(
(function (host, global, databaseUrl) {
    "use strict";

    function fail(number, message) {
        var error = new Error(message);
        error.number = number;
        error.description = message;
        throw error;
    }

    // An object reference on its way into the host: the host recognises it
    // by this prototype, which no script can reach.
    function Ref(id) { this.id = id; }

    // The id a proxy or a window object stands for is kept on the object
    // itself, under a key no script is handed (no WeakMap: the script engine
    // crashes collecting a WeakMap whose keys have become garbage). A script
    // that dug the key out could only name objects and windows it was handed
    // already: the host checks every id.
    var idKey = Symbol("vbi id");
    function idOf(value) {
        if (value === null || (typeof value !== "object" && typeof value !== "function"))
            return undefined;
        var id = value[idKey];
        return typeof id === "number" ? id : undefined;
    }
    var memberKinds = new Map();
    function Window() {}

    // Script values on their way to the component: a proxy becomes the
    // reference to its object, inside arrays and plain objects as well.
    function toHost(value) {
        if (value !== null && typeof value === "object") {
            var id = idOf(value);
            if (id !== undefined && !(value instanceof Window))
                return new Ref(id);
            if (Array.isArray(value))
                return value.map(toHost);
            if (Object.getPrototypeOf(value) === Object.prototype) {
                var copy = {};
                Object.keys(value).forEach(function (key) { copy[key] = toHost(value[key]); });
                return copy;
            }
        }
        return value;
    }

    // "p:Name" for a property, "m:Name" for a method, "" for neither; the
    // answer depends only on the class, so it is asked once per class.
    function kindOf(id, className, name) {
        var members = memberKinds.get(className);
        if (!members) {
            members = new Map();
            memberKinds.set(className, members);
        }
        var kind = members.get(name);
        if (kind === undefined) {
            kind = host.memberKind(id, name);
            if (kind !== "")
                members.set(name, kind);
        }
        return kind;
    }

    // The target lists the members as own keys, so Object.keys() and
    // JSON.stringify() see the properties (methods are not enumerable); the
    // values themselves always come from the component through get().
    var memberTables = new Map();
    function memberTable(id, className) {
        var names = memberTables.get(className);
        if (!names) {
            names = { properties: host.propertyNames(id), methods: host.methodNames(id) };
            memberTables.set(className, names);
        }
        var table = {};
        names.properties.forEach(function (name) {
            Object.defineProperty(table, name, { value: undefined, writable: true, enumerable: true, configurable: true });
        });
        names.methods.forEach(function (name) {
            Object.defineProperty(table, name, { value: undefined, writable: true, enumerable: false, configurable: true });
        });
        return table;
    }

    function makeProxy(id, className) {
        var methods = new Map();
        var proxy;
        function method(name) {
            var f = methods.get(name);
            if (!f) {
                f = function () { return host.call(id, name, Array.prototype.map.call(arguments, toHost)); };
                Object.defineProperty(f, "name", { value: name });
                methods.set(name, f);
            }
            return f;
        }
        proxy = new Proxy(memberTable(id, className), {
            get: function (target, name) {
                if (name === idKey)
                    return id;
                if (typeof name !== "string")
                    return undefined;
                var kind = kindOf(id, className, name);
                if (kind.charAt(0) === "m")
                    return method(kind.substring(2));
                if (kind.charAt(0) === "p")
                    return host.get(id, kind.substring(2));
                switch (name) {
                case "toString":
                case "toLocaleString":
                    return function () { return "[object " + className + "]"; };
                case "valueOf":
                    return function () { return proxy; };
                case "toJSON":
                    // The script engine's JSON ignores the get() of a proxy: hand it a snapshot.
                    return function () {
                        var snapshot = {};
                        host.propertyNames(id).forEach(function (property) {
                            snapshot[property] = host.get(id, property);
                        });
                        return snapshot;
                    };
                case "then":
                    return undefined;
                }
                return host.get(id, name);
            },
            set: function (target, name, value) {
                if (typeof name !== "string")
                    return false;
                host.set(id, name, toHost(value));
                return true;
            },
            has: function (target, name) {
                return typeof name === "string" && kindOf(id, className, name) !== "";
            },
            defineProperty: function () { return false; },
            deleteProperty: function () { return false; },
            setPrototypeOf: function () { return false; }
        });
        return proxy;
    }

    // Calling a member that does not exist ("engine.Foo()") makes the script
    // engine replace the 438 raised by the proxy with a TypeError of its own
    // that quotes it; these getters give that TypeError the number, source
    // and description of the original error, so a script catches 438 either way.
    var missingMember = /Object doesn't support this property or method: '([^']*)'/;
    [["number", function (found) { return 438; }],
     ["source", function (found) { return found[1]; }],
     ["description", function (found) { return found[0]; }]].forEach(function (entry) {
        Object.defineProperty(TypeError.prototype, entry[0], {
            get: function () {
                var found = missingMember.exec(String(this.message));
                return found ? entry[1](found) : undefined;
            },
            configurable: true
        });
    });

    function makeWindow(id) {
        var window = Object.create(Window.prototype);
        Object.defineProperty(window, idKey, { value: id });
        return window;
    }
    function windowOp(window, name, args) {
        var id = window instanceof Window ? idOf(window) : undefined;
        if (id === undefined)
            fail(13, "Window." + name + " was called on something that is not a window");
        return host.windowOp(id, name, Array.prototype.map.call(args, toHost));
    }
    ["objectName", "title", "message", "buttons", "icon", "kind", "className", "isOpen", "focus", "controls",
     "color", "font"].forEach(function (name) {
        Object.defineProperty(Window.prototype, name, {
            get: function () { return windowOp(this, name, []); },
            enumerable: true
        });
    });
    ["getText", "setText", "isChecked", "setChecked", "isEnabled", "setEnabled", "isVisible", "hasControl",
     "selection", "select", "doubleClick", "setExpanded", "entries", "nodes", "controlProperty", "property",
     "click", "answer", "cancel", "close", "accept", "pressKey", "chooseColor", "chooseFont"].forEach(function (name) {
        Object.defineProperty(Window.prototype, name, {
            value: function () { return windowOp(this, name, arguments); }
        });
    });
    Object.defineProperty(Window.prototype, "toString", {
        value: function () { return "[window " + this.objectName + "]"; }
    });

    function show(value) {
        if (typeof value === "string")
            return value;
        if (value !== null && typeof value === "object" && idOf(value) === undefined
            && !(value instanceof Error)) {
            try {
                return JSON.stringify(value);
            } catch (e) {
            }
        }
        return String(value);
    }

    function define(name, value) {
        Object.defineProperty(global, name, { value: value, writable: true, enumerable: false, configurable: true });
    }

    function freeze(object) {
        Object.keys(object).forEach(function (key) {
            if (typeof object[key] === "object" && object[key] !== null)
                freeze(object[key]);
        });
        return Object.freeze(object);
    }

    define("CreateObject", function CreateObject(progId) {
        if (arguments.length !== 1)
            fail(450, "Wrong number of arguments or invalid property assignment: CreateObject takes 1 argument (the programmatic name), "
                 + arguments.length + " given");
        if (typeof progId !== "string")
            fail(13, "Type mismatch: CreateObject takes the programmatic name as text, such as \"VendimarBI.EEngine\"");
        return host.createObject(progId);
    });
    define("print", function print() {
        host.print(Array.prototype.map.call(arguments, show).join(" "));
    });
    define("console", Object.freeze({
        log: function () { host.print(Array.prototype.map.call(arguments, show).join(" ")); },
        error: function () { host.printError(Array.prototype.map.call(arguments, show).join(" ")); }
    }));
    define("assert", function assert(condition, message) {
        if (arguments.length < 1 || arguments.length > 2)
            fail(450, "Wrong number of arguments or invalid property assignment: assert takes a condition and, optionally, a message");
        if (condition)
            return;
        var text = "Assertion failed" + (message === undefined ? "" : ": " + show(message));
        var error = new Error(text);
        error.name = "AssertionError";
        host.assertionFailed(error);
        throw error;
    });
    define("onNextWindow", function onNextWindow(handler) {
        if (typeof handler !== "function")
            fail(13, "Type mismatch: onNextWindow takes a function, the handler of the next modal window");
        host.addWindowHandler(handler);
    });
    define("pendingWindowHandlers", function pendingWindowHandlers() {
        return host.pendingWindowHandlers();
    });
    define("windowsSeen", function windowsSeen() {
        return host.windowsSeen();
    });
    define("setTimeLimit", function setTimeLimit(seconds) {
        if (typeof seconds !== "number" || !(seconds > 0))
            fail(5, "Invalid procedure call or argument: setTimeLimit takes a number of seconds greater than 0");
        host.setTimeLimit(seconds);
    });
    define("gc", function gc() {
        host.collectGarbage();
    });
    define("DatabaseUrl", databaseUrl);
    define("VendimarBI", freeze(host.enumerations()));

    host.setup(Ref.prototype, makeProxy, makeWindow);
})
)JS");
}
