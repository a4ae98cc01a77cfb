// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Workbench

TestCase { // the test of one component, which is made in a window
    id: root

    property Component component
    // a.png and b.png, of 60x40 pixels
    readonly property WorkbenchModel photographs: photographsOfTest // qmllint disable unqualified

    // The component with `properties`, until the test function ends. Its type is that of the component.
    function make(properties: var): var {
        return createTemporaryObject(root.component, root, properties);
    }

    // The first item in `item` whose `property` is `value`.
    function find(item: Item, property: string, value: var): var {
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            const found = child.visible && child[property] === value ? child : root.find(child, property, value);
            if (found)
                return found;
        }
        return null;
    }

    // Clicks the item in `item` whose text is `text`.
    function press(item: Item, text: string): void {
        const found = root.find(item, "text", text);
        verify(found, text);
        mouseClick(found);
    }

    function spyOn(object: QtObject, name: string): SignalSpy {
        return createTemporaryObject(spy, root, {
            target: object,
            signalName: name
        });
    }

    // What the model says about its first photograph, by the number of the role.
    function fact(role: int): var {
        return root.photographs.data(root.photographs.index(0, 0), Qt.UserRole + role);
    }

    readonly property Component spy: SignalSpy {}

    width: 800
    height: 600
    visible: true
    when: windowShown
}
