<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>Analyzer</name>
    <message>
        <source>Analyzer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LCF / MLCF Analysis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exec. LCF / MLCF Analysis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fit each spectrum as a weighted sum of the references</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fitting Range: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start of the fitting range [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End of the fitting range [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Ref</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a row for another reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zansa</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the map of the residuals of the fits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Residual of the last single fit: mean squared relative deviation over the number of points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disp. on Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paint the maps after each row of an analysis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rows of the running analysis that are done [%]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Analyze</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Analyse each block of the selected area; stops a running analysis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image Type:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Min.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DMut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the edge step that a reference carries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DMut at the bottom of the fixed scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DMut at the top of the fixed scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the weight of a reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ratio at the bottom of the fixed scale; a weight of 1 is 100 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ratio at the top of the fixed scale; a weight of 1 is 100 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fixed Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paint maps by the given scale instead of the range of their values</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BatchCtrl</name>
    <message>
        <source>Batch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch Cmds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exec.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch File (*.bat)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Body</name>
    <message>
        <source>Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images through the sample, one per energy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images without the sample, one per energy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File of the dark image; its counts are scaled to the exposure of each stack</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exp.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exposure time of the dark image [ms], from its file; may be overruled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the dark image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Work without a dark image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>BG Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Background spectrum, shown in a view of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the background spectrum</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total I0 of I1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scan file whose I0 replaces the I0 images, point by image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total I0 of I0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scan file of the I0 stack; kept and logged, enters no calculation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Spectrum</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>xw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Half width of the averaging block in x [pixels]; the block spans 2 xw + 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>yw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Half width of the averaging block in y [pixels]; the block spans 2 yw + 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>[pix]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dPreE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End of the pre-edge range, relative to the edge [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dPostS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start of the post-edge range, relative to the edge [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look for the edge only near the energy given here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Suggest Elm.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Symbol of the element</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Absorption edge of the element</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edge</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy of the suggested edge [eV]; follows element and edge, may be overruled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Th. Jmp.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An edge counts when its step exceeds this many times the noise of both lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sgm.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>I0:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Divide the sample images (I1) by the I0 images of the same energy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fluorescence yield I1 / I0 in place of the absorption ln(I0 / I1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fluo. Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Img/Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save what the image area shows, and the colour bar, as pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save all result maps as pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save All Images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write flat.dat and dark.dat of the image size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Flat Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the values of the shown result map as TIFF or text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose TIFF or text, scale and layout of saved data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Data Cfg.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Proc. Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normalised spectrum of each point of the area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normalized XAFS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Absorption spectrum of each point of the area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw XAFS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>I1 counts of each point of the area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write the spectra of all points of the area as text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Each Spectrum</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DeGlitch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replace values of the shown result map that stand out from their neighbours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show and save the filtered values of the result map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Filtered</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extra</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fourier analysis of the intensity over the stack, into the log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fourier A.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write all values of the shown result map into the log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Chk Vals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the sample images (I1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the images without the sample (I0)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>I0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the energy shift map [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>E-Shift Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the result map that the Analyzer has chosen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Results</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the selected area alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the whole image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag: select an area. Ctrl+drag: zoom into it. Shift+drag: move. Wheel: zoom; at an edge, in one direction. Right click: no selection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vertical section through the cursor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale of the image; drag its two handles to spread the greys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Horizontal section through the cursor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw all images of the stack by the handles of the scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The image before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prev</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The next image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of the shown image, from 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pixel under the cursor (x, y)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dE Std.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shift of the spectrum under the cursor from the standard [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dE Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy shift map under the cursor [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Box</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Corners of the selected area [pixels]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value of the shown map under the cursor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark level under the cursor [counts]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Windows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Spectrum under the cursor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy calibration across the detector</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fits and maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Analyzer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quality of the data and dark check</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Analyzer2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Registration of shifted images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Img. Proc.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch text, its run and its log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch Ctrl.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>I1 Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>I0 Data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tiff File (*.tif)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data File (*.dat)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EOFSetup</name>
    <message>
        <source>Energy of Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy from the file name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The energy stands in the name of each file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Regular expression of the energy in the name; &quot;_&quot; stands for the decimal point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Patterns in use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Factor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Multiplier to eV; 1000 for names in keV</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy by calculation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By Calculation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Even steps from a start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit of start, step and end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Even in energy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps even in energy; otherwise even in the angle of the monochromator</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy or angle of the first file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delta</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step from file to file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy or angle behind the last step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of steps from start to end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy from a scan file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By Reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energies of a scan reference file, one per image file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EShiftMapDialog</name>
    <message>
        <source>Energy Shift Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy Shift Map File (*.emp)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LCFReference</name>
    <message>
        <source>LCF Reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the map of this reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Weight of this reference in the last single fit [%]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dMut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edge step that this reference carries in the last single fit: weight times the step of the spectrum</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dE [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Energy shift of the reference [eV], taken off its energies</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ref. dMut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edge step of the reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mid E</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edge mid point of the reference [eV]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Victreen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normalise the reference with Victoreen lines instead of straight ones</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SaveDataCfg</name>
    <message>
        <source>Save Data Configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as Tiff</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the shown map as a 16-bit TIFF file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fixed Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Spread the values from Min to Max over the 16 bits, instead of the range of the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Map value that becomes 0, in the unit of the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>  Max</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Map value that becomes 65535, in the unit of the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as Analyzed Area Size and Resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One value for each analysed block instead of one for each pixel of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as Text data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the analysed positions of the shown map as text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comma Separated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Space Separated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X Y Val : 1point/1line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each position on a line of its own; X and Y in pixels of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Val1 Val2 Val3... : each Y line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The values of a row of positions on one line</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SelectDataFiles</name>
    <message>
        <source>Data Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files that are loaded; the chosen one is shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of files that are loaded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose image files and load them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The next selection replaces the stack</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The next selection is added to the stack</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forget all files and images of the stack</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How the energy of each file is found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Display while loading, bad pixels, dark area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add. Setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step through the selection: 2 loads every other file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cut F.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files left out at the start of the selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cut L.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files left out at the end of the selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exp.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exposure time of the images [ms], from the files; on red when they differ; may be overruled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X ax.: eV</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit of the energies in the setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X ax.: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SelectDataFilesAdditionalSetup</name>
    <message>
        <source>Additional Setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Latest Image on Load</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show each image as it arrives</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ignore  &apos;Live&apos; file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pass over files with &quot;Live&quot; in their path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bad Pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select Err. Ps. Def.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the list of bad pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use Err Points Mask</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Correct the bad pixels of images read from now on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File of the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark Area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set Dark Area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The selected area gives the dark level of each image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Up Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the dark level of all images anew</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CLR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Work without a dark area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark Area:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Corners of the dark area [pixels]</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SelectImgDialog</name>
    <message>
        <source>Select Images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>BRNX Files, IMG Files, Tiff Files (*.dat *.img *.tif *.tiff)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>XafsFileSelect</name>
    <message>
        <source>XAFS File Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use this file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File of the spectrum</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Work without this file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>XAFS Data File (*.dat)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
