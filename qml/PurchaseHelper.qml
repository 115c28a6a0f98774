pragma Singleton
import QtQuick 2.15

// Where the premium checks meet the interface. Every check passes on this build, so there is
// nothing to ask yet; the singleton exists so that the pages can import it under its name.
QtObject {
}
