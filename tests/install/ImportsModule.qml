// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound

import QtQml
import NImageUtils 1.0

QtObject {
    id: root
    readonly property NImageUtils images: NImageUtils {}
    readonly property OSUtils system: OSUtils {}
    readonly property string extension: root.images.getExtension("/photographs/a.b.tiff")
}
