<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>AElemsConds</name>
    <message>
        <source>Analyze Elems Conditions</source>
        <translation>元素解析の条件</translation>
    </message>
    <message>
        <source>BG Values :</source>
        <translation>BG 値 :</translation>
    </message>
    <message>
        <source>dmut</source>
        <translation>dmut</translation>
    </message>
    <message>
        <source>Stands for dmut, Mut+ and Mut- of a position without an edge</source>
        <translation>吸収端のない位置の dmut、Mut+、Mut- の値</translation>
    </message>
    <message>
        <source>dmut-Ratio</source>
        <translation>dmut 比</translation>
    </message>
    <message>
        <source>Background value of the ratio of dmut. It takes no part in the analysis.</source>
        <translation>dmut 比のバックグラウンド値。解析には使われません。</translation>
    </message>
    <message>
        <source>dE</source>
        <translation>dE</translation>
    </message>
    <message>
        <source>Stands for dE of a position without an edge [eV]</source>
        <translation>吸収端のない位置の dE の値 [eV]</translation>
    </message>
    <message>
        <source>ROI</source>
        <translation>ROI</translation>
    </message>
    <message>
        <source>Stands for ROI and normalized ROI of a position without an edge</source>
        <translation>吸収端のない位置の ROI と規格化 ROI の値</translation>
    </message>
    <message>
        <source>NROI</source>
        <translation>NROI</translation>
    </message>
    <message>
        <source>Background value of the normalized ROI. It takes no part in the analysis: that of the ROI stands for both.</source>
        <translation>規格化 ROI のバックグラウンド値。解析には使われません: ROI の値が両方に使われます。</translation>
    </message>
</context>
<context>
    <name>AnalysisConductor</name>
    <message>
        <source>No images: load them in step 1</source>
        <translation>画像がない: 手順 1 で読み込む</translation>
    </message>
    <message>
        <source>No analysis is chosen: check the box above</source>
        <translation>解析が選ばれていない: 上のボックスをチェックする</translation>
    </message>
    <message>
        <source>The selected area lies outside the image</source>
        <translation>選択領域が画像の外にある</translation>
    </message>
    <message>
        <source>%1 blocks of %2 x %3 pixels, selected area</source>
        <translation>%2 x %3 画素のブロック %1 個、選択領域</translation>
    </message>
    <message>
        <source>%1 blocks of %2 x %3 pixels, whole image</source>
        <translation>%2 x %3 画素のブロック %1 個、画像全体</translation>
    </message>
</context>
<context>
    <name>Analyzer</name>
    <message>
        <source>Analyzer</source>
        <translation>解析</translation>
    </message>
    <message>
        <source>Disp. on Time</source>
        <translation>随時表示</translation>
    </message>
    <message>
        <source>Paint the maps after each row of an analysis</source>
        <translation>解析中、1 行終わるごとにマップを描画する</translation>
    </message>
    <message>
        <source>Image Type:</source>
        <translation>画像の種類:</translation>
    </message>
    <message>
        <source>Min.</source>
        <translation>最小</translation>
    </message>
    <message>
        <source>Max.</source>
        <translation>最大</translation>
    </message>
    <message>
        <source>DMut</source>
        <translation>Δμt</translation>
    </message>
    <message>
        <source>Show the edge step that a reference carries</source>
        <translation>参照スペクトルが担う吸収端ジャンプを表示する</translation>
    </message>
    <message>
        <source>DMut at the bottom of the fixed scale</source>
        <translation>固定スケールの下端の Δμt</translation>
    </message>
    <message>
        <source>DMut at the top of the fixed scale</source>
        <translation>固定スケールの上端の Δμt</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>比率</translation>
    </message>
    <message>
        <source>Show the weight of a reference</source>
        <translation>参照スペクトルの重みを表示する</translation>
    </message>
    <message>
        <source>Ratio at the bottom of the fixed scale; a weight of 1 is 100 %</source>
        <translation>固定スケールの下端の比率。重み 1 が 100 %</translation>
    </message>
    <message>
        <source>Ratio at the top of the fixed scale; a weight of 1 is 100 %</source>
        <translation>固定スケールの上端の比率。重み 1 が 100 %</translation>
    </message>
    <message>
        <source>Fixed Scale</source>
        <translation>スケール固定</translation>
    </message>
    <message>
        <source>Paint maps by the given scale instead of the range of their values</source>
        <translation>マップを値の範囲ではなく指定したスケールで描画する</translation>
    </message>
    <message>
        <source>Analyzing Spectrum</source>
        <translation>解析中のスペクトル</translation>
    </message>
    <message>
        <source>The analysis of these maps was stopped: positions not reached are 0</source>
        <translation>これらのマップの解析は途中で停止された: 未到達の位置は 0</translation>
    </message>
    <message>
        <source>Least DMut of the fixed scale</source>
        <translation>固定スケールの Δµt 最小値</translation>
    </message>
    <message>
        <source>Greatest DMut of the fixed scale</source>
        <translation>固定スケールの Δµt 最大値</translation>
    </message>
    <message>
        <source>Least ratio of the fixed scale</source>
        <translation>固定スケールの比率最小値</translation>
    </message>
    <message>
        <source>Greatest ratio of the fixed scale</source>
        <translation>固定スケールの比率最大値</translation>
    </message>
    <message>
        <source>Stop the analysis; the maps keep what is done</source>
        <translation>解析を停止する (終わった部分はマップに残る)</translation>
    </message>
    <message>
        <source>Analyse each block of the selected area</source>
        <translation>選択領域の各ブロックを解析する</translation>
    </message>
    <message>
        <source>Outcomes</source>
        <translation>結果の種別</translation>
    </message>
    <message>
        <source>Show what became of each position of the last analysis: fitted, or why not</source>
        <translation>直近の解析での各点の結果を表示する: フィット済み、またはその理由</translation>
    </message>
</context>
<context>
    <name>Analyzer2</name>
    <message>
        <source>Analyzer2</source>
        <translation>解析 2</translation>
    </message>
    <message>
        <source>Dark Check</source>
        <translation>暗画素チェック</translation>
    </message>
    <message>
        <source>Dark up to</source>
        <translation>暗の上限</translation>
    </message>
    <message>
        <source>Counts at or below which a pixel is dark</source>
        <translation>カウントがこの値以下の画素を暗いとみなす</translation>
    </message>
    <message>
        <source>Histg. Max.</source>
        <translation>ヒスト上端</translation>
    </message>
    <message>
        <source>Counts at the end of the histogram; what lies above is counted there</source>
        <translation>ヒストグラムの上端のカウント。これを超えるものは上端で数える</translation>
    </message>
    <message>
        <source>Bins</source>
        <translation>ビン数</translation>
    </message>
    <message>
        <source>Bins of the histogram, from 0 to its end</source>
        <translation>0 から上端までのヒストグラムのビンの数</translation>
    </message>
    <message>
        <source>Bad Pixels of the Configuration</source>
        <translation>設定ファイルの不良画素</translation>
    </message>
    <message>
        <source>Use Err Points Mask</source>
        <translation>不良画素マスクを使用</translation>
    </message>
    <message>
        <source>Collect Q Info</source>
        <translation>Q 情報収集</translation>
    </message>
    <message>
        <source>Kept for figures of the data&apos;s quality: nothing is collected yet</source>
        <translation>データの品質情報のためのもの。まだ何も収集しない</translation>
    </message>
    <message>
        <source>Find the pixels that stay dark in all I1 images, and write the files of the check into the working folder</source>
        <translation>すべての I1 画像で暗いままの画素を探し、結果のファイルを作業フォルダに書く</translation>
    </message>
    <message>
        <source>Stop the check; nothing is written</source>
        <translation>チェックを止める。何も書かない</translation>
    </message>
    <message>
        <source>Threshold of the dark check</source>
        <translation>暗画素チェックのしきい値</translation>
    </message>
    <message>
        <source>Upper end of the histogram</source>
        <translation>ヒストグラムの上端</translation>
    </message>
    <message>
        <source>Bins of the histogram</source>
        <translation>ヒストグラムのビン数</translation>
    </message>
    <message>
        <source>Correct the bad pixels of the configuration&apos;s list in images without a list of their own, such as the dark image, when they are read</source>
        <translation>独自のリストを持たない画像 (ダーク画像など) を読むとき、設定ファイルのリストの不良画素を補正する</translation>
    </message>
    <message>
        <source>There is no list: the key ErrPoints of the configuration names none that can be read</source>
        <translation>リストがない: 設定ファイルのキー ErrPoints に読めるリストの指定がない</translation>
    </message>
</context>
<context>
    <name>ArithmeticConductor</name>
    <message>
        <source>Both maps must hold a picture</source>
        <translation>両方のマップに画像が必要</translation>
    </message>
</context>
<context>
    <name>ArithmeticSection</name>
    <message>
        <source>Select Map 1</source>
        <translation>マップ 1 を選択</translation>
    </message>
    <message>
        <source>Read an energy shift map [eV] from a file as the first map</source>
        <translation>エネルギーシフトマップ [eV] をファイルから 1 番目のマップとして読み込む</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>取り込み</translation>
    </message>
    <message>
        <source>Take a copy of the chosen map, as it is now, as the first map</source>
        <translation>選択中のマップの現在の内容を 1 番目のマップとして写す</translation>
    </message>
    <message>
        <source>Name or file of the first map</source>
        <translation>1 番目のマップの名前またはファイル</translation>
    </message>
    <message>
        <source>Map1</source>
        <translation>マップ 1</translation>
    </message>
    <message>
        <source>Show the first map</source>
        <translation>1 番目のマップを表示する</translation>
    </message>
    <message>
        <source>Select Map 2</source>
        <translation>マップ 2 を選択</translation>
    </message>
    <message>
        <source>Read an energy shift map [eV] from a file as the second map</source>
        <translation>エネルギーシフトマップ [eV] をファイルから 2 番目のマップとして読み込む</translation>
    </message>
    <message>
        <source>Take a copy of the chosen map, as it is now, as the second map</source>
        <translation>選択中のマップの現在の内容を 2 番目のマップとして写す</translation>
    </message>
    <message>
        <source>Name or file of the second map</source>
        <translation>2 番目のマップの名前またはファイル</translation>
    </message>
    <message>
        <source>Map2</source>
        <translation>マップ 2</translation>
    </message>
    <message>
        <source>Show the second map</source>
        <translation>2 番目のマップを表示する</translation>
    </message>
    <message>
        <source>Sub.</source>
        <translation>差</translation>
    </message>
    <message>
        <source>First map less the second, summed over each block</source>
        <translation>ブロックごとの和で、1 番目から 2 番目を引く</translation>
    </message>
    <message>
        <source>Div.</source>
        <translation>商</translation>
    </message>
    <message>
        <source>First map over the second, summed over each block; 1 where the second is 0</source>
        <translation>ブロックごとの和で、1 番目を 2 番目で割る。2 番目が 0 の点は 1</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>マスク</translation>
    </message>
    <message>
        <source>First map, summed over each block, where the second is above 0; else 0</source>
        <translation>2 番目が正の点では 1 番目のブロックごとの和、それ以外は 0</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>演算実行</translation>
    </message>
    <message>
        <source>Processed</source>
        <translation>演算結果</translation>
    </message>
    <message>
        <source>Show the processed map</source>
        <translation>演算したマップを表示する</translation>
    </message>
    <message>
        <source>Process Maps</source>
        <translation>マップの演算</translation>
    </message>
    <message>
        <source>Load Map %1</source>
        <translation>マップ %1 の読み込み</translation>
    </message>
    <message>
        <source>Process both maps over the selected area, block by block</source>
        <translation>選択範囲で、両方のマップをブロックごとに演算する</translation>
    </message>
</context>
<context>
    <name>BatchCtrl</name>
    <message>
        <source>Batch</source>
        <translation>バッチ</translation>
    </message>
    <message>
        <source>Batch Cmds</source>
        <translation>バッチコマンド</translation>
    </message>
    <message>
        <source>Progress Log</source>
        <translation>実行ログ</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>読込</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Clear Log</source>
        <translation>ログ消去</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>Exec.</source>
        <translation>実行</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Batch File (*.bat)</source>
        <translation>バッチファイル (*.bat)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Batch commands, one a line</source>
        <translation>バッチコマンド (1 行に 1 つ)</translation>
    </message>
    <message>
        <source>Lines as they are run, and their faults</source>
        <translation>実行した行とエラー</translation>
    </message>
    <message>
        <source>Open a batch file</source>
        <translation>バッチファイルを開く</translation>
    </message>
    <message>
        <source>Save the commands as a batch file</source>
        <translation>コマンドをバッチファイルに保存する</translation>
    </message>
    <message>
        <source>Empty the log</source>
        <translation>ログを空にする</translation>
    </message>
    <message>
        <source>Empty the commands</source>
        <translation>コマンドを空にする</translation>
    </message>
    <message>
        <source>Run the commands</source>
        <translation>コマンドを実行する</translation>
    </message>
    <message>
        <source>Stop the run after the current command</source>
        <translation>現在のコマンドの後で実行を停止する</translation>
    </message>
    <message>
        <source>Save Batch File</source>
        <translation>バッチファイルを保存</translation>
    </message>
    <message>
        <source>Load Batch File</source>
        <translation>バッチファイルを読み込む</translation>
    </message>
    <message>
        <source>Waiting since %1 for line %2: %3</source>
        <translation>%1 から %2 行目を待っています: %3</translation>
    </message>
    <message>
        <source>Waiting since %1 for %2</source>
        <translation>%1 から %2 を待っています</translation>
    </message>
    <message>
        <source>These are %1 lines, too many to be shown. They can be run.</source>
        <translation>%1 行あり、表示するには多すぎます。実行はできます。</translation>
    </message>
    <message>
        <source>A run is under way: &quot;Exec.&quot; puts this text in place of its rest</source>
        <translation>バッチを実行中: &quot;実行&quot; は残りをこのテキストに置き換える</translation>
    </message>
    <message>
        <source>A run has ended: press &quot;Stop&quot;, then &quot;Exec.&quot; starts the next</source>
        <translation>バッチは終了した: &quot;停止&quot; を押すと &quot;実行&quot; で次を始められる</translation>
    </message>
    <message>
        <source>Tell in the log what the commands would stumble over, without running them</source>
        <translation>実行せずに、コマンドの問題点を調べてログに示します</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>確認</translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>待機中</translation>
    </message>
    <message>
        <source>Running line %1</source>
        <translation>%1 行目を実行中</translation>
    </message>
</context>
<context>
    <name>Body</name>
    <message>
        <source>Maps Not Saved</source>
        <translation>マップ未保存</translation>
    </message>
    <message>
        <source>The maps of the last analysis are not saved.</source>
        <translation>最後の解析のマップが保存されていません。</translation>
    </message>
</context>
<context>
    <name>CalibConductor</name>
    <message>
        <source>No images: load them in step 1</source>
        <translation>画像がない: 手順 1 で読み込む</translation>
    </message>
    <message>
        <source>No standard: select its file above</source>
        <translation>標準試料がない: 上でファイルを選ぶ</translation>
    </message>
    <message>
        <source>The selected area lies outside the image</source>
        <translation>選択領域が画像の外にある</translation>
    </message>
    <message>
        <source>No shift map</source>
        <translation>シフトマップなし</translation>
    </message>
    <message>
        <source>No edge energy: select the standard or type it</source>
        <translation>吸収端エネルギーがない: 標準試料を選ぶか入力する</translation>
    </message>
</context>
<context>
    <name>CalibCtrl</name>
    <message>
        <source>Calibration</source>
        <translation>較正</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>標準試料</translation>
    </message>
    <message>
        <source>Std. :</source>
        <translation>標準 :</translation>
    </message>
    <message>
        <source>Simple</source>
        <translation>直線</translation>
    </message>
    <message>
        <source>Straight lines as background of the standard</source>
        <translation>標準試料のバックグラウンドを直線とする</translation>
    </message>
    <message>
        <source>Victreen</source>
        <translation>Victoreen</translation>
    </message>
    <message>
        <source>Victoreen curves as background of the standard</source>
        <translation>標準試料のバックグラウンドを Victoreen 曲線とする</translation>
    </message>
    <message>
        <source>Edge Energy</source>
        <translation>吸収端エネルギー</translation>
    </message>
    <message>
        <source>Edge energy for which a map is loaded [eV]: that of the standard, or another one to carry the map to another edge</source>
        <translation>マップを読み込む吸収端のエネルギー [eV]: 標準試料の値、または別の吸収端に移すときはその値</translation>
    </message>
    <message>
        <source>Calib. Conditions</source>
        <translation>較正条件</translation>
    </message>
    <message>
        <source>Crystal of the monochromator: its lattice spacing turns energies into the angles of the map file</source>
        <translation>分光結晶: 格子面間隔によりエネルギーとマップファイルの角度を換算する</translation>
    </message>
    <message>
        <source>Target :</source>
        <translation>対象 :</translation>
    </message>
    <message>
        <source>Straight lines as background of the pixels&apos; spectra</source>
        <translation>画素のスペクトルのバックグラウンドを直線とする</translation>
    </message>
    <message>
        <source>Victoreen curves as background of the pixels&apos; spectra</source>
        <translation>画素のスペクトルのバックグラウンドを Victoreen 曲線とする</translation>
    </message>
    <message>
        <source>dMidx</source>
        <translation>dMidx</translation>
    </message>
    <message>
        <source>Calibrate by checking the difference of dMidx, which is a point defined as a cross point of a spectrum and mean value of pre- and post-edge lines.</source>
        <translation>dMidx (プリエッジ線とポストエッジ線の平均とスペクトルの交点) の差で較正する</translation>
    </message>
    <message>
        <source>inner P.</source>
        <translation>内積</translation>
    </message>
    <message>
        <source>Calibrate by checking normalized inner products of the spectrum at the point and the standard spectrum. </source>
        <translation>各点のスペクトルと標準スペクトルの規格化した内積で較正する </translation>
    </message>
    <message>
        <source>Initial E-range</source>
        <translation>初期 E 範囲</translation>
    </message>
    <message>
        <source>Largest shift tried, up and down from the difference of the mid points [eV]</source>
        <translation>中点の差を中心に上下に試すシフトの最大値 [eV]</translation>
    </message>
    <message>
        <source>E-step</source>
        <translation>E 間隔</translation>
    </message>
    <message>
        <source>First step of the search [eV]; each further one is a tenth, over a tenth of the range</source>
        <translation>探索の最初の間隔 [eV]、以後は範囲も間隔も 1/10 ずつになる</translation>
    </message>
    <message>
        <source>Min. E-step</source>
        <translation>最小 E 間隔</translation>
    </message>
    <message>
        <source>The search ends before its step falls below this [eV]</source>
        <translation>間隔がこの値を下回る前に探索を終える [eV]</translation>
    </message>
    <message>
        <source>Exec Calib.</source>
        <translation>較正実行</translation>
    </message>
    <message>
        <source>Rows of the running calibration that are done [%]</source>
        <translation>実行中の較正で終わった行の割合 [%]</translation>
    </message>
    <message>
        <source>NES</source>
        <translation>NES</translation>
    </message>
    <message>
        <source>Normalise E shift: take out single outliers of the map, more than 40 eV off</source>
        <translation>E シフトの正規化: 40 eV を超えて外れた孤立値をマップから除く</translation>
    </message>
    <message>
        <source>Clear Map</source>
        <translation>マップ消去</translation>
    </message>
    <message>
        <source>Drop the energy shift map: spectra are taken without shifts</source>
        <translation>エネルギーシフトマップを消去する (スペクトルはシフトなしになる)</translation>
    </message>
    <message>
        <source>Statistic &amp;&amp; Properties</source>
        <translation>統計と情報</translation>
    </message>
    <message>
        <source>Delta Energy DMin.</source>
        <translation>ΔE 最小</translation>
    </message>
    <message>
        <source>Smallest shift of the last calibration [eV]</source>
        <translation>前回の較正での最小シフト [eV]</translation>
    </message>
    <message>
        <source>Max.</source>
        <translation>最大</translation>
    </message>
    <message>
        <source>Largest shift [eV]</source>
        <translation>最大シフト [eV]</translation>
    </message>
    <message>
        <source>Avr.</source>
        <translation>平均</translation>
    </message>
    <message>
        <source>Mean shift [eV]</source>
        <translation>平均シフト [eV]</translation>
    </message>
    <message>
        <source>sigma</source>
        <translation>σ</translation>
    </message>
    <message>
        <source>Standard deviation of the shifts [eV]</source>
        <translation>シフトの標準偏差 [eV]</translation>
    </message>
    <message>
        <source>X Offset</source>
        <translation>X オフセット</translation>
    </message>
    <message>
        <source>Column of the detector at which the images begin [pixels]</source>
        <translation>画像が始まる検出器上の列 [画素]</translation>
    </message>
    <message>
        <source>Y Offset</source>
        <translation>Y オフセット</translation>
    </message>
    <message>
        <source>Row of the detector at which the images begin [pixels]</source>
        <translation>画像が始まる検出器上の行 [画素]</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>幅</translation>
    </message>
    <message>
        <source>Width of the images [pixels]</source>
        <translation>画像の幅 [画素]</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>高さ</translation>
    </message>
    <message>
        <source>Height of the images [pixels]</source>
        <translation>画像の高さ [画素]</translation>
    </message>
    <message>
        <source>Energy Shift Map</source>
        <translation>エネルギーシフトマップ</translation>
    </message>
    <message>
        <source>File that the map was last loaded from or saved to</source>
        <translation>最後に読込・保存したマップのファイル</translation>
    </message>
    <message>
        <source>Chk. Size</source>
        <translation>サイズ確認</translation>
    </message>
    <message>
        <source>Refuse map files of another size than that of the images</source>
        <translation>画像とサイズの異なるマップファイルを拒否する</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>読込</translation>
    </message>
    <message>
        <source>Load a map from a file</source>
        <translation>マップをファイルから読み込む</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save the map to a file</source>
        <translation>マップをファイルに保存する</translation>
    </message>
    <message>
        <source>Select Std.</source>
        <translation>標準試料の選択</translation>
    </message>
    <message>
        <source>Stop Calib.</source>
        <translation>較正停止</translation>
    </message>
    <message>
        <source>Stop the calibration; the map keeps what is done</source>
        <translation>較正を停止する (終わった部分はマップに残る)</translation>
    </message>
    <message>
        <source>Compare each block of the selected area with the standard</source>
        <translation>選択領域の各ブロックを標準試料と比較する</translation>
    </message>
    <message>
        <source>Use hint</source>
        <translation>指定を使う</translation>
    </message>
    <message>
        <source>Look for the standard&apos;s edge, too, only near that of Suggest Elm. in the main window, and take its ranges</source>
        <translation>標準試料の吸収端もメインウィンドウの「元素を指定」の近くでのみ探し、その範囲を使う</translation>
    </message>
    <message>
        <source>Former Map</source>
        <translation>前のマップ</translation>
    </message>
    <message>
        <source>Bring back the map that the last calibration, load or clear replaced; a second press undoes that</source>
        <translation>直前の較正、読込、消去で置き換わったマップに戻す。もう一度押すと取り消す</translation>
    </message>
    <message>
        <source>The calibration of this map was stopped: positions not reached have no shift</source>
        <translation>このマップの較正は途中で停止された: 未到達の位置にはシフトがない</translation>
    </message>
    <message>
        <source>Load Energy Shift Map</source>
        <translation>エネルギーシフトマップを読み込む</translation>
    </message>
    <message>
        <source>Save Energy Shift Map</source>
        <translation>エネルギーシフトマップを保存</translation>
    </message>
    <message>
        <source>Select Standard</source>
        <translation>標準試料を選択</translation>
    </message>
    <message>
        <source>Median</source>
        <translation>中央値</translation>
    </message>
    <message>
        <source>MAD</source>
        <translation>MAD</translation>
    </message>
    <message>
        <source>Median absolute deviation: half of the shifts lie nearer to their median [eV]</source>
        <translation>中央絶対偏差: 半数のシフトは中央値からこの値以内にある [eV]</translation>
    </message>
    <message>
        <source>Median of the shifts of the map in force: half of them lie below [eV]</source>
        <translation>有効なマップのシフトの中央値。半数がこれより小さい [eV]</translation>
    </message>
    <message>
        <source>Spread</source>
        <translation>広がり</translation>
    </message>
    <message>
        <source>How far the shifts lie from their median, little moved by outliers: 1.4826 times the median distance [eV]</source>
        <translation>シフトの中央値からの広がり。外れ値の影響は小さい。中央値からの距離の中央値の 1.4826 倍 [eV]</translation>
    </message>
    <message>
        <source>No shift map</source>
        <translation>シフトマップなし</translation>
    </message>
    <message>
        <source>Edge energy of the standard</source>
        <translation>標準試料の吸収端エネルギー</translation>
    </message>
    <message>
        <source>No map was replaced yet</source>
        <translation>置き換えられたマップはまだない</translation>
    </message>
</context>
<context>
    <name>CursorConductor</name>
    <message>
        <source>I0 counts</source>
        <translation>I0 カウント</translation>
    </message>
    <message>
        <source>mu t</source>
        <translation>μt</translation>
    </message>
</context>
<context>
    <name>DEdgeSection</name>
    <message>
        <source>Mid Point</source>
        <translation>中点</translation>
    </message>
    <message>
        <source>Measure the mid point of the edge from the energy of the suggested edge [eV]</source>
        <translation>想定吸収端のエネルギーから吸収端の中点までを測ります [eV]</translation>
    </message>
    <message>
        <source>Comp. with</source>
        <translation>比較対象</translation>
    </message>
    <message>
        <source>Shift the whole normalised curve until it is most like a comparison spectrum: within 20 eV round the distance of both mid points by steps of 1 eV, within 2 eV by steps of 0.1 eV</source>
        <translation>規格化した曲線全体をずらし、比較スペクトルに最も近い位置を探します: 両中点の差の前後 20 eV を 1 eV 刻み、さらに 2 eV を 0.1 eV 刻み</translation>
    </message>
    <message>
        <source>File</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>Compare with the spectrum of a file</source>
        <translation>ファイルのスペクトルと比較します</translation>
    </message>
    <message>
        <source>Step at</source>
        <translation>ステップ位置</translation>
    </message>
    <message>
        <source>Takes no part: edges are compared with the file, whichever is checked</source>
        <translation>使われません: どちらを選んでもファイルと比較します</translation>
    </message>
    <message>
        <source>Energy of the step [eV]; takes no part</source>
        <translation>ステップのエネルギー [eV]; 使われません</translation>
    </message>
    <message>
        <source>Show dEge Map</source>
        <translation>dEge マップ表示</translation>
    </message>
    <message>
        <source>Show the map of the shifts of the edge [eV]</source>
        <translation>吸収端のずれのマップを表示します [eV]</translation>
    </message>
    <message>
        <source>Shift of the edge of the last spectrum, its energy shift taken off [eV]</source>
        <translation>最後のスペクトルの吸収端のずれ (エネルギーシフトを除く) [eV]</translation>
    </message>
    <message>
        <source>Exec. Gen dEge Map</source>
        <translation>dEge マップ作成</translation>
    </message>
    <message>
        <source>Find how far the edge of each spectrum is shifted</source>
        <translation>各スペクトルの吸収端のずれを求めます</translation>
    </message>
    <message>
        <source>Select Comparison Spectrum</source>
        <translation>比較スペクトルの選択</translation>
    </message>
    <message>
        <source>Energy of the step that edges are compared with</source>
        <translation>吸収端を比較するステップのエネルギー</translation>
    </message>
    <message>
        <source>No comparison spectrum: load one, or choose the mid point</source>
        <translation>比較スペクトルがありません: 読み込むか、中点を選んでください</translation>
    </message>
</context>
<context>
    <name>DataBox</name>
    <message>
        <source>Data</source>
        <translation>データ</translation>
    </message>
    <message>
        <source>Images through the sample, one per energy</source>
        <translation>試料を透過した画像 (エネルギーごとに 1 枚)</translation>
    </message>
    <message>
        <source>Images without the sample, one per energy</source>
        <translation>試料なしの画像 (エネルギーごとに 1 枚)</translation>
    </message>
    <message>
        <source>Dark Data</source>
        <translation>ダークデータ</translation>
    </message>
    <message>
        <source>File of the dark image; its counts are scaled to the exposure of each stack</source>
        <translation>ダーク画像のファイル。カウントは各スタックの露光時間に換算される</translation>
    </message>
    <message>
        <source>Exp.</source>
        <translation>露光</translation>
    </message>
    <message>
        <source>Exposure time of the dark image [ms], from its file; may be overruled</source>
        <translation>ダーク画像の露光時間 [ms]。ファイルから読み取るが変更可</translation>
    </message>
    <message>
        <source>Choose the dark image</source>
        <translation>ダーク画像を選択する</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Work without a dark image</source>
        <translation>ダーク画像を使わない</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>BG Data</source>
        <translation>BG データ</translation>
    </message>
    <message>
        <source>Background spectrum, shown in a view of its own</source>
        <translation>バックグラウンドスペクトル (別のビューに表示)</translation>
    </message>
    <message>
        <source>Show the background spectrum</source>
        <translation>バックグラウンドスペクトルを表示する</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Total I0 of I1</source>
        <translation>I1 の全 I0</translation>
    </message>
    <message>
        <source>Scan file whose I0 replaces the I0 images, point by image</source>
        <translation>その I0 を各点ごとに I0 画像の代わりに用いるスキャンファイル</translation>
    </message>
    <message>
        <source>Total I0 of I0</source>
        <translation>I0 の全 I0</translation>
    </message>
    <message>
        <source>Scan file of the I0 stack; kept and logged, enters no calculation</source>
        <translation>I0 スタックのスキャンファイル。保持してログに記録するだけで計算には用いない</translation>
    </message>
    <message>
        <source>I1 Data</source>
        <translation>I1 データ</translation>
    </message>
    <message>
        <source>I0 Data</source>
        <translation>I0 データ</translation>
    </message>
    <message>
        <source>Select Dark Data</source>
        <translation>ダークデータを選択</translation>
    </message>
    <message>
        <source>Select BG Data</source>
        <translation>BG データを選択</translation>
    </message>
    <message>
        <source>Select Total I0 of I1</source>
        <translation>I1 の全 I0 を選択</translation>
    </message>
    <message>
        <source>Select Total I0 of I0</source>
        <translation>I0 の全 I0 を選択</translation>
    </message>
</context>
<context>
    <name>DiagnosticsConductor</name>
    <message>
        <source>Pixels that are dark in all %2 images: %1; of them not on the list of bad pixels: %3; on the list and not dark: %4</source>
        <translation>全 %2 画像で暗い画素: %1。うち不良画素リストにないもの: %3。リストにあって暗くないもの: %4</translation>
    </message>
    <message>
        <source>No images: load them in step 1</source>
        <translation>画像がない: 手順 1 で読み込む</translation>
    </message>
    <message>
        <source>%1 images of %2 x %3 pixels</source>
        <translation>画像 %1 枚、%2 x %3 画素</translation>
    </message>
</context>
<context>
    <name>EOFSetup</name>
    <message>
        <source>Energy of Files</source>
        <translation>ファイルのエネルギー</translation>
    </message>
    <message>
        <source>By Name</source>
        <translation>ファイル名</translation>
    </message>
    <message>
        <source>The energy stands in the name of each file</source>
        <translation>各ファイルの名前に含まれるエネルギーを使う</translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation>パターン</translation>
    </message>
    <message>
        <source>Regular expression of the energy in the name; &quot;_&quot; stands for the decimal point</source>
        <translation>ファイル名中のエネルギーを表す正規表現。&quot;_&quot; は小数点を表す</translation>
    </message>
    <message>
        <source>Patterns in use</source>
        <translation>使用できるパターン</translation>
    </message>
    <message>
        <source>Factor</source>
        <translation>係数</translation>
    </message>
    <message>
        <source>Multiplier to eV; 1000 for names in keV</source>
        <translation>eV に換算する係数。keV のファイル名では 1000</translation>
    </message>
    <message>
        <source>By Calculation</source>
        <translation>計算</translation>
    </message>
    <message>
        <source>Even steps from a start</source>
        <translation>開始値から等間隔で計算する</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>単位</translation>
    </message>
    <message>
        <source>Unit of start, step and end</source>
        <translation>開始・間隔・終了の単位</translation>
    </message>
    <message>
        <source>Even in energy</source>
        <translation>エネルギー等間隔</translation>
    </message>
    <message>
        <source>Steps even in energy; otherwise even in the angle of the monochromator</source>
        <translation>エネルギーで等間隔。オフでは分光器の角度で等間隔</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Energy or angle of the first file</source>
        <translation>最初のファイルのエネルギーまたは角度</translation>
    </message>
    <message>
        <source>Delta</source>
        <translation>間隔</translation>
    </message>
    <message>
        <source>Step from file to file</source>
        <translation>ファイル間の間隔</translation>
    </message>
    <message>
        <source>End</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Energy or angle behind the last step</source>
        <translation>最後の間隔の後のエネルギーまたは角度</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>点数</translation>
    </message>
    <message>
        <source>Number of steps from start to end</source>
        <translation>開始から終了までの間隔の数</translation>
    </message>
    <message>
        <source>By Reference</source>
        <translation>参照ファイル</translation>
    </message>
    <message>
        <source>Energies of a scan reference file, one per image file</source>
        <translation>参照するスキャンファイルのエネルギーを画像ファイルごとに 1 点ずつ使う</translation>
    </message>
    <message>
        <source>Crystal d</source>
        <translation>結晶 d</translation>
    </message>
    <message>
        <source>Spacing of the monochromator crystal [angstrom], for angles and steps even in angle; a scan file may bring its own</source>
        <translation>分光結晶の格子面間隔 [オングストローム]: 角度と角度等間隔の計算に使う。スキャンファイルの値が優先されることがある</translation>
    </message>
    <message>
        <source>Takes the spacing of a crystal</source>
        <translation>結晶の格子面間隔を使う</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
    <message>
        <source>Give the files already loaded their energies anew</source>
        <translation>読み込み済みのファイルのエネルギーを計算し直す</translation>
    </message>
    <message>
        <source>Energies that the files get by this setup</source>
        <translation>この設定で各ファイルに割り当てられるエネルギー</translation>
    </message>
    <message>
        <source>X ax.: eV</source>
        <translation>X 軸: eV</translation>
    </message>
    <message>
        <source>Unit of the energies in the setup</source>
        <translation>設定で使うエネルギーの単位</translation>
    </message>
    <message>
        <source>Copy to I0</source>
        <translation>I0 にコピー</translation>
    </message>
    <message>
        <source>Give the I0 files the same setup; those already loaded follow with their own Apply</source>
        <translation>I0 のファイルにも同じ設定を使う。読み込み済みの I0 には、I0 側の「適用」で反映する</translation>
    </message>
    <message>
        <source>X ax.: %1</source>
        <translation>X 軸: %1</translation>
    </message>
</context>
<context>
    <name>EShiftMapDialog</name>
    <message>
        <source>Energy Shift Map</source>
        <translation>エネルギーシフトマップ</translation>
    </message>
    <message>
        <source>Energy Shift Map File (*.emp)</source>
        <translation>エネルギーシフトマップファイル (*.emp)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
</context>
<context>
    <name>ElemCtrl</name>
    <message>
        <source>Elem Ctrl</source>
        <translation>Elem Ctrl</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Show</translation>
    </message>
    <message>
        <source>Show the maps of this element</source>
        <translation>この元素のマップを表示します</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>Target</translation>
    </message>
    <message>
        <source>Take ratios against the dmut of this element</source>
        <translation>この元素の dmut に対する比をとります</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Use</translation>
    </message>
    <message>
        <source>Let this element take part in the correlation</source>
        <translation>この元素を相関に使います</translation>
    </message>
    <message>
        <source>Atomic number</source>
        <translation>原子番号</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>元素</translation>
    </message>
    <message>
        <source>dmut of the last position: mu(E0+dE) - mu(E0-dE), or its background value</source>
        <translation>最後の位置の dmut: mu(E0+dE) - mu(E0-dE)、またはバックグラウンド値</translation>
    </message>
    <message>
        <source>Relative strength of the dmut against the dmut of selecte element as Target.</source>
        <translation>Target に選んだ元素の dmut に対する dmut の比。</translation>
    </message>
    <message>
        <source>Conditions and further results of this element</source>
        <translation>この元素の条件とその他の結果</translation>
    </message>
    <message>
        <source>More of this element</source>
        <translation>この元素の詳細</translation>
    </message>
    <message>
        <source>E0</source>
        <translation>E0</translation>
    </message>
    <message>
        <source>Expected Absorption Edge. [eV]</source>
        <translation>想定吸収端 [eV]</translation>
    </message>
    <message>
        <source>Pre/Post dE</source>
        <translation>Pre/Post dE</translation>
    </message>
    <message>
        <source>dmut is calculated as mu(E0+dE) - mu(E0-dE). [eV]</source>
        <translation>dmut は mu(E0+dE) - mu(E0-dE) です [eV]</translation>
    </message>
    <message>
        <source>Th dmut</source>
        <translation>Th dmut</translation>
    </message>
    <message>
        <source>Threshold value of the dmut.
When the dmut is less than the Threshold, most of the values (ROI, dmut,...) is set at BG Val.</source>
        <translation>dmut のしきい値。
dmut がこれより小さいと、ほとんどの値 (ROI, dmut, ...) は BG 値になります。</translation>
    </message>
    <message>
        <source>Std. Ratio</source>
        <translation>標準比</translation>
    </message>
    <message>
        <source>Standard value of the ratio, which the correlation compares with</source>
        <translation>相関で比較する標準の比</translation>
    </message>
    <message>
        <source>ROI</source>
        <translation>ROI</translation>
    </message>
    <message>
        <source>Start position of the ROI. [eV]</source>
        <translation>ROI の始点 [eV]</translation>
    </message>
    <message>
        <source>End position of the ROI. [eV]</source>
        <translation>ROI の終点 [eV]</translation>
    </message>
    <message>
        <source>ROI Value</source>
        <translation>ROI 値</translation>
    </message>
    <message>
        <source>N.ROI</source>
        <translation>N.ROI</translation>
    </message>
    <message>
        <source>Normalized ROI value calculated as ROI / dmut.</source>
        <translation>規格化 ROI: ROI / dmut</translation>
    </message>
    <message>
        <source>dE</source>
        <translation>dE</translation>
    </message>
    <message>
        <source>Position of the absorption edge, where the mut is ( mu(E0+dE) + mu(E0-dE) ) / 2. Counted from E0 [eV]</source>
        <translation>mut が ( mu(E0+dE) + mu(E0-dE) ) / 2 になる吸収端の位置。E0 からの差 [eV]</translation>
    </message>
    <message>
        <source>[eV] Th</source>
        <translation>[eV] Th</translation>
    </message>
    <message>
        <source>Threshold [eV]. It takes no part in the analysis.</source>
        <translation>しきい値 [eV]。解析には使われません。</translation>
    </message>
    <message>
        <source>No Neg</source>
        <translation>No Neg</translation>
    </message>
    <message>
        <source>When the ROI is negative, the BG value is used instead of the calculated one.</source>
        <translation>ROI が負のとき、計算値の代わりに BG 値を使います。</translation>
    </message>
    <message>
        <source>Element and edge: %1</source>
        <translation>元素と吸収端: %1</translation>
    </message>
    <message>
        <source>Edge energy of %1</source>
        <translation>%1 の吸収端エネルギー</translation>
    </message>
    <message>
        <source>Pre/Post dE of %1</source>
        <translation>%1 の Pre/Post dE</translation>
    </message>
    <message>
        <source>Th dmut of %1</source>
        <translation>%1 の Th dmut</translation>
    </message>
    <message>
        <source>Std. Ratio of %1</source>
        <translation>%1 の標準比</translation>
    </message>
    <message>
        <source>Start of the ROI of %1</source>
        <translation>%1 の ROI の始点</translation>
    </message>
    <message>
        <source>End of the ROI of %1</source>
        <translation>%1 の ROI の終点</translation>
    </message>
</context>
<context>
    <name>ElementResults</name>
    <message>
        <source>Results of the element analysis</source>
        <translation>元素解析の結果</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>元素</translation>
    </message>
    <message>
        <source>dmut</source>
        <translation>dmut</translation>
    </message>
    <message>
        <source>N. dmut</source>
        <translation>N. dmut</translation>
    </message>
    <message>
        <source>Mut+</source>
        <translation>Mut+</translation>
    </message>
    <message>
        <source>Mut-</source>
        <translation>Mut-</translation>
    </message>
    <message>
        <source>dE [eV]</source>
        <translation>dE [eV]</translation>
    </message>
    <message>
        <source>ROI</source>
        <translation>ROI</translation>
    </message>
    <message>
        <source>N.ROI</source>
        <translation>N.ROI</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Copy the table as text, columns parted by tabs</source>
        <translation>表をタブ区切りのテキストでコピーします</translation>
    </message>
</context>
<context>
    <name>ElementsSection</name>
    <message>
        <source>Target Element Names</source>
        <translation>対象元素名</translation>
    </message>
    <message>
        <source>Elements of the scan, such as: Fe, Cu-K Pb-L3. Without an edge the K edge is meant.
Another list makes new rows; the maps of the earlier ones are gone.</source>
        <translation>スキャンの元素、例: Fe, Cu-K Pb-L3。吸収端を省くと K 端です。
リストを変えると行が作り直され、前の行のマップは消えます。</translation>
    </message>
    <message>
        <source>Sort by A. No.</source>
        <translation>原子番号順</translation>
    </message>
    <message>
        <source>Put the rows in the order of atomic number when the list is entered</source>
        <translation>リストを入力したとき、行を原子番号順に並べます</translation>
    </message>
    <message>
        <source>Show, Target, Use</source>
        <translation>Show, Target, Use</translation>
    </message>
    <message>
        <source>dmut</source>
        <translation>dmut</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>比</translation>
    </message>
    <message>
        <source>Show Map of</source>
        <translation>表示するマップ</translation>
    </message>
    <message>
        <source>dMut of The Elem.</source>
        <translation>元素の dMut</translation>
    </message>
    <message>
        <source>Show the map of dmut of the element whose Show is checked</source>
        <translation>Show を選んだ元素の dmut マップを表示します</translation>
    </message>
    <message>
        <source>N. dMut of The Elem.</source>
        <translation>元素の規格化 dMut</translation>
    </message>
    <message>
        <source>Show the map of its dmut over that of the target</source>
        <translation>Target の dmut に対する比のマップを表示します</translation>
    </message>
    <message>
        <source>Mut+</source>
        <translation>Mut+</translation>
    </message>
    <message>
        <source>Show the map of the absorption above its edge</source>
        <translation>吸収端より上の吸収のマップを表示します</translation>
    </message>
    <message>
        <source>Mut-</source>
        <translation>Mut-</translation>
    </message>
    <message>
        <source>Show the map of the absorption below its edge</source>
        <translation>吸収端より下の吸収のマップを表示します</translation>
    </message>
    <message>
        <source>dE</source>
        <translation>dE</translation>
    </message>
    <message>
        <source>Show the map of the shift of its edge [eV]</source>
        <translation>吸収端のずれのマップを表示します [eV]</translation>
    </message>
    <message>
        <source>ROI</source>
        <translation>ROI</translation>
    </message>
    <message>
        <source>Show the map of its region of interest</source>
        <translation>関心領域 (ROI) のマップを表示します</translation>
    </message>
    <message>
        <source>N.ROI</source>
        <translation>N.ROI</translation>
    </message>
    <message>
        <source>Show the map of its region of interest over dmut</source>
        <translation>ROI / dmut のマップを表示します</translation>
    </message>
    <message>
        <source>Correlation</source>
        <translation>相関</translation>
    </message>
    <message>
        <source>Show the map of the correlation of the ratios with the standard ones</source>
        <translation>標準比との相関のマップを表示します</translation>
    </message>
    <message>
        <source>Cor. Th</source>
        <translation>相関しきい値</translation>
    </message>
    <message>
        <source>Show the map of the correlation where it is not below its threshold</source>
        <translation>しきい値以上の相関のマップを表示します</translation>
    </message>
    <message>
        <source>Correlation of the ratios of the rows in use with their standard ratios, 1 for the same pattern</source>
        <translation>使用する行の比と標準比との相関; 同じパターンなら 1</translation>
    </message>
    <message>
        <source>Cor. Th.</source>
        <translation>相関しきい値</translation>
    </message>
    <message>
        <source>Threshold of the correlation</source>
        <translation>相関のしきい値</translation>
    </message>
    <message>
        <source>ReCalc Cor.</source>
        <translation>相関再計算</translation>
    </message>
    <message>
        <source>Make both correlation maps anew from the ratios that the analysis left</source>
        <translation>解析で得た比から両方の相関マップを作り直します</translation>
    </message>
    <message>
        <source>Set STD</source>
        <translation>標準に設定</translation>
    </message>
    <message>
        <source>Take the ratios of the last position as standard ratios</source>
        <translation>最後の位置の比を標準比とします</translation>
    </message>
    <message>
        <source>Show Elem. A. Res.</source>
        <translation>元素解析結果</translation>
    </message>
    <message>
        <source>Show the last results of all rows in a table</source>
        <translation>全行の最後の結果を表で表示します</translation>
    </message>
    <message>
        <source>Disp. on TIme</source>
        <translation>逐次表示</translation>
    </message>
    <message>
        <source>Paint the maps after each row of an analysis</source>
        <translation>解析中、一行ごとにマップを描きます</translation>
    </message>
    <message>
        <source>Element Analysis</source>
        <translation>元素解析</translation>
    </message>
    <message>
        <source>Measure the jumps of several elements in a scan over their edges</source>
        <translation>複数の吸収端を含むスキャンで各元素のジャンプを測ります</translation>
    </message>
    <message>
        <source>Analyse the elements in each block of the selected area</source>
        <translation>選択領域の各ブロックの元素を解析します</translation>
    </message>
    <message>
        <source>Stop the analysis; the maps keep what is done</source>
        <translation>解析を中止します; 済んだ分はマップに残ります</translation>
    </message>
    <message>
        <source>Background value of dmut</source>
        <translation>dmut のバックグラウンド値</translation>
    </message>
    <message>
        <source>Background value of dE</source>
        <translation>dE のバックグラウンド値</translation>
    </message>
    <message>
        <source>Background value of ROI</source>
        <translation>ROI のバックグラウンド値</translation>
    </message>
    <message>
        <source>No target element: enter some above</source>
        <translation>対象元素がありません: 上に入力してください</translation>
    </message>
</context>
<context>
    <name>EnergyPreview</name>
    <message>
        <source>no files</source>
        <translation>ファイルなし</translation>
    </message>
    <message>
        <source>1 file at %1 eV</source>
        <translation>1 ファイル、%1 eV</translation>
    </message>
    <message>
        <source>2 files at %1 and %2 eV</source>
        <translation>2 ファイル、%1 と %2 eV</translation>
    </message>
    <message>
        <source>%1 files at %2, %3 ... %4 eV</source>
        <translation>%1 ファイル、%2, %3 ... %4 eV</translation>
    </message>
    <message>
        <source>no energies of X-rays</source>
        <translation>X 線のエネルギーではありません</translation>
    </message>
    <message>
        <source>energies do not rise: %1, then %2 eV</source>
        <translation>エネルギーが増加しません: %1 の次が %2 eV</translation>
    </message>
</context>
<context>
    <name>ExplainConductor</name>
    <message>
        <source>Position %1, %2</source>
        <translation>位置 %1, %2</translation>
    </message>
    <message>
        <source>Explain (%1, %2)...</source>
        <translation>(%1, %2) の説明...</translation>
    </message>
</context>
<context>
    <name>ExportConductor</name>
    <message>
        <source>Data File (*.dat)</source>
        <translation>データファイル (*.dat)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Save Each Spectrum</source>
        <translation>各点スペクトルを保存</translation>
    </message>
    <message>
        <source>No images: load them in step 1</source>
        <translation>画像がない: 手順 1 で読み込む</translation>
    </message>
    <message>
        <source>Check what is to be written of each point</source>
        <translation>各点について書き出すものを選んでください</translation>
    </message>
</context>
<context>
    <name>FindBar</name>
    <message>
        <source>Find</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>前へ</translation>
    </message>
    <message>
        <source>Go back (Shift+F3)</source>
        <translation>前を検索 (Shift+F3)</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>次へ</translation>
    </message>
    <message>
        <source>Go on (F3)</source>
        <translation>次を検索 (F3)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>閉じる (Esc)</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>見つかりません</translation>
    </message>
</context>
<context>
    <name>Fold</name>
    <message>
        <source>Fold this part away</source>
        <translation>この部分をたたむ</translation>
    </message>
    <message>
        <source>Show this part</source>
        <translation>この部分を開く</translation>
    </message>
</context>
<context>
    <name>FolderConductor</name>
    <message>
        <source>No images in %1 and its folders</source>
        <translation>%1 とその下のフォルダに画像がない</translation>
    </message>
    <message>
        <source>No image of I1 could be read</source>
        <translation>I1 の画像を 1 枚も読めなかった</translation>
    </message>
</context>
<context>
    <name>FolderContents</name>
    <message>
        <source>Only %1 of %2 folders were looked through.</source>
        <translation>%2 個のフォルダのうち %1 個だけを調べた</translation>
    </message>
    <message>
        <source>Only the first %1 files were looked at.</source>
        <translation>最初の %1 個のファイルだけを調べた</translation>
    </message>
    <message>
        <source>Only the %1 largest of %2 series are shown.</source>
        <translation>%2 組のうちファイル数の多い %1 組だけを表示</translation>
    </message>
    <message>
        <source>No images that can be read: %1</source>
        <translation>読める画像ではない: %1</translation>
    </message>
    <message>
        <source>Only the first %1 of %2 text files were looked at.</source>
        <translation>%2 個のテキストファイルのうち最初の %1 個だけを調べた</translation>
    </message>
    <message>
        <source>The folder %1 can&apos;t be read</source>
        <translation>フォルダ %1 を読めない</translation>
    </message>
</context>
<context>
    <name>FolderDialog</name>
    <message>
        <source>Open Folder</source>
        <translation>フォルダを開く</translation>
    </message>
</context>
<context>
    <name>FolderQuestion</name>
    <message>
        <source>Found in %1</source>
        <translation>%1 の内容</translation>
    </message>
    <message>
        <source>Load 1 reference spectrum into the analysis</source>
        <translation>参照スペクトル 1 個を解析に読み込む</translation>
    </message>
    <message>
        <source>Load %1 reference spectra into the analysis</source>
        <translation>参照スペクトル %1 個を解析に読み込む</translation>
    </message>
    <message>
        <source>Mend the bad pixels of %1</source>
        <translation>%1 の不良画素を補正する</translation>
    </message>
    <message>
        <source>Mend the bad pixels of</source>
        <translation>次のリストの不良画素を補正する</translation>
    </message>
    <message>
        <source>The names of I1 and I0 hold no energies that rise</source>
        <translation>I1 と I0 のファイル名に増加するエネルギーがない</translation>
    </message>
    <message>
        <source>Energies not set: type the energy of the first image</source>
        <translation>エネルギーが未設定: 最初の画像のエネルギーを入力する</translation>
    </message>
    <message>
        <source>I0: %1</source>
        <translation>I0: %1</translation>
    </message>
    <message>
        <source>The dark image has other pixels than I1</source>
        <translation>ダーク画像の画素数が I1 と異なる</translation>
    </message>
    <message>
        <source>Of %1 dark images the first is used</source>
        <translation>%1 枚のダーク画像のうち最初の 1 枚を使う</translation>
    </message>
    <message>
        <source>Choose the series of I1</source>
        <translation>I1 の組を選ぶ</translation>
    </message>
    <message>
        <source>Load %1 images</source>
        <translation>%1 枚を読み込む</translation>
    </message>
    <message>
        <source>Load %1 + %2 images</source>
        <translation>%1 + %2 枚を読み込む</translation>
    </message>
    <message>
        <source>Load 1 image</source>
        <translation>1 枚を読み込む</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>読み込む</translation>
    </message>
    <message>
        <source>Energies of I1 and I0</source>
        <translation>I1 と I0 のエネルギー</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>From the names</source>
        <translation>ファイル名から</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>間隔</translation>
    </message>
    <message>
        <source>(none found)</source>
        <translation>(見つからない)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>GesturesHelp</name>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Colour bar</source>
        <translation>カラーバー</translation>
    </message>
    <message>
        <source>Spectrum</source>
        <translation>スペクトル</translation>
    </message>
    <message>
        <source>Data rows</source>
        <translation>データ行</translation>
    </message>
    <message>
        <source>Main window</source>
        <translation>メインウィンドウ</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>ドラッグ</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>ホイール</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移動</translation>
    </message>
    <message>
        <source>Move the cursor</source>
        <translation>カーソルを動かす</translation>
    </message>
    <message>
        <source>Alt + move</source>
        <translation>Alt + 移動</translation>
    </message>
    <message>
        <source>Leave the cursor where it is</source>
        <translation>カーソルをその位置に残す</translation>
    </message>
    <message>
        <source>Select an area</source>
        <translation>領域を選択する</translation>
    </message>
    <message>
        <source>Ctrl + drag</source>
        <translation>Ctrl + ドラッグ</translation>
    </message>
    <message>
        <source>Select an area and zoom to it</source>
        <translation>領域を選択して拡大する</translation>
    </message>
    <message>
        <source>Shift + drag</source>
        <translation>Shift + ドラッグ</translation>
    </message>
    <message>
        <source>Move the view</source>
        <translation>表示範囲を動かす</translation>
    </message>
    <message>
        <source>Right click</source>
        <translation>右クリック</translation>
    </message>
    <message>
        <source>Clear the selection</source>
        <translation>選択を解除する</translation>
    </message>
    <message>
        <source>Zoom about the cursor</source>
        <translation>カーソルを中心に拡大・縮小する</translation>
    </message>
    <message>
        <source>Wheel near the left or right side</source>
        <translation>左右の端でホイール</translation>
    </message>
    <message>
        <source>Wheel near the top or bottom</source>
        <translation>上下の端でホイール</translation>
    </message>
    <message>
        <source>Move the nearer end of the scale</source>
        <translation>スケールの近い方の端を動かす</translation>
    </message>
    <message>
        <source>Move along the energy axis</source>
        <translation>エネルギー軸に沿って動かす</translation>
    </message>
    <message>
        <source>Zoom the energy axis about the cursor</source>
        <translation>カーソルを中心にエネルギー軸を拡大・縮小する</translation>
    </message>
    <message>
        <source>Drop files</source>
        <translation>ファイルをドロップ</translation>
    </message>
    <message>
        <source>Load them as if they were selected there</source>
        <translation>その行で選択した場合と同じように読み込む</translation>
    </message>
    <message>
        <source>Gestures and Keys</source>
        <translation>マウス操作とキー</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>場所</translation>
    </message>
    <message>
        <source>What</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>Effect</source>
        <translation>動作</translation>
    </message>
    <message>
        <source>Double click</source>
        <translation>ダブルクリック</translation>
    </message>
    <message>
        <source>Anywhere</source>
        <translation>どこでも</translation>
    </message>
    <message>
        <source>Zoom the height alone, without square pixels</source>
        <translation>正方形の画素でないとき、高さだけを拡大・縮小</translation>
    </message>
    <message>
        <source>Zoom the width alone, without square pixels</source>
        <translation>正方形の画素でないとき、幅だけを拡大・縮小</translation>
    </message>
    <message>
        <source>Arrows</source>
        <translation>矢印キー</translation>
    </message>
    <message>
        <source>Browse the images</source>
        <translation>画像を順に見る</translation>
    </message>
    <message>
        <source>Shift + arrows</source>
        <translation>Shift + 矢印キー</translation>
    </message>
    <message>
        <source>Move the cursor pixel by pixel</source>
        <translation>カーソルを1画素ずつ動かす</translation>
    </message>
    <message>
        <source>Automatic range</source>
        <translation>範囲を自動にする</translation>
    </message>
    <message>
        <source>Drop a folder</source>
        <translation>フォルダをドロップ</translation>
    </message>
    <message>
        <source>Ask what of it is to be loaded</source>
        <translation>何を読み込むかを尋ねる</translation>
    </message>
    <message>
        <source>Batch text</source>
        <translation>バッチのテキスト</translation>
    </message>
    <message>
        <source>Ctrl+Space</source>
        <translation>Ctrl+Space</translation>
    </message>
    <message>
        <source>Offer commands or files</source>
        <translation>コマンドまたはファイルの候補を表示</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <source>Find a text</source>
        <translation>テキストを検索</translation>
    </message>
    <message>
        <source>F3 or Shift+F3</source>
        <translation>F3 または Shift+F3</translation>
    </message>
    <message>
        <source>Find the next one, or the one before</source>
        <translation>次または前を検索</translation>
    </message>
</context>
<context>
    <name>HeldGap</name>
    <message>
        <source>Gap unsound</source>
        <translation>間隔が不適</translation>
    </message>
    <message>
        <source>Gap held above %1 eV</source>
        <translation>%1 eV 以上で間隔を保持</translation>
    </message>
    <message>
        <source>Gap held below %1 eV</source>
        <translation>%1 eV 以下で間隔を保持</translation>
    </message>
    <message>
        <source>Gap held above %1 eV and below %2 eV</source>
        <translation>%1 eV 以上と %2 eV 以下で間隔を保持</translation>
    </message>
</context>
<context>
    <name>HistoryPanel</name>
    <message>
        <source>Save History as Batch</source>
        <translation>履歴をバッチとして保存</translation>
    </message>
    <message>
        <source>Batch File (*.bat)</source>
        <translation>バッチファイル (*.bat)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>History</source>
        <translation>履歴</translation>
    </message>
    <message>
        <source>What you do is listed here, as lines of a batch</source>
        <translation>操作がバッチの行としてここに並びます</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>Forget what was done so far</source>
        <translation>これまでの履歴を消します</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Copy what is selected, or all lines, to the clipboard</source>
        <translation>選択した行、なければすべての行をクリップボードにコピーします</translation>
    </message>
    <message>
        <source>Run Again</source>
        <translation>再実行</translation>
    </message>
    <message>
        <source>Run all lines as a batch</source>
        <translation>すべての行をバッチとして実行します</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>保存...</translation>
    </message>
    <message>
        <source>Save all lines as a batch file</source>
        <translation>すべての行をバッチファイルに保存します</translation>
    </message>
</context>
<context>
    <name>ImageBox</name>
    <message>
        <source>Show the sample images (I1)</source>
        <translation>試料画像 (I1) を表示する</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>データ</translation>
    </message>
    <message>
        <source>Show the images without the sample (I0)</source>
        <translation>試料なしの画像 (I0) を表示する</translation>
    </message>
    <message>
        <source>I0</source>
        <translation>I0</translation>
    </message>
    <message>
        <source>Show the energy shift map [eV]</source>
        <translation>エネルギーシフトマップ [eV] を表示する</translation>
    </message>
    <message>
        <source>E-Shift Map</source>
        <translation>E シフトマップ</translation>
    </message>
    <message>
        <source>Show the result map that the Analyzer has chosen</source>
        <translation>「解析」ウィンドウで選んだ結果マップを表示する</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>結果</translation>
    </message>
    <message>
        <source>Show the selected area alone</source>
        <translation>選択領域だけを表示する</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>拡大</translation>
    </message>
    <message>
        <source>Show the whole image</source>
        <translation>画像全体を表示する</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>リセット</translation>
    </message>
    <message>
        <source>Drag: select an area. Ctrl+drag: zoom into it. Shift+drag: move. Wheel: zoom; at an edge, in one direction. Right click: no selection.</source>
        <translation>ドラッグ: 領域を選択。Ctrl+ドラッグ: その領域を拡大。Shift+ドラッグ: 移動。ホイール: 拡大・縮小 (端では一方向のみ)。右クリック: 選択解除。</translation>
    </message>
    <message>
        <source>Vertical section through the cursor</source>
        <translation>カーソルを通る縦断面</translation>
    </message>
    <message>
        <source>Horizontal section through the cursor</source>
        <translation>カーソルを通る横断面</translation>
    </message>
    <message>
        <source>Set All</source>
        <translation>全画像に適用</translation>
    </message>
    <message>
        <source>The image before</source>
        <translation>前の画像</translation>
    </message>
    <message>
        <source>Prev</source>
        <translation>前へ</translation>
    </message>
    <message>
        <source>Number of the image</source>
        <translation>画像番号</translation>
    </message>
    <message>
        <source>The next image</source>
        <translation>次の画像</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>次へ</translation>
    </message>
    <message>
        <source>Number of the shown image, from 0</source>
        <translation>表示中の画像の番号 (0 から)</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Pixel under the cursor (x, y)</source>
        <translation>カーソル位置の画素 (x, y)</translation>
    </message>
    <message>
        <source>dE Std.</source>
        <translation>dE 標準</translation>
    </message>
    <message>
        <source>Shift of the spectrum under the cursor from the standard [eV]</source>
        <translation>カーソル位置のスペクトルの標準試料からのシフト [eV]</translation>
    </message>
    <message>
        <source>dE Map</source>
        <translation>dE マップ</translation>
    </message>
    <message>
        <source>Energy shift map under the cursor [eV]</source>
        <translation>カーソル位置のエネルギーシフトマップの値 [eV]</translation>
    </message>
    <message>
        <source>Box</source>
        <translation>範囲</translation>
    </message>
    <message>
        <source>Corners of the selected area [pixels]</source>
        <translation>選択領域の角の座標 [画素]</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>値</translation>
    </message>
    <message>
        <source>Value under the cursor: counts of an image; a map&apos;s own unit, [eV] for energy shifts</source>
        <translation>カーソル位置の値: 画像はカウント、マップはそれぞれの単位 (エネルギーシフトは [eV])</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>ダーク</translation>
    </message>
    <message>
        <source>Dark level under the cursor [counts]</source>
        <translation>カーソル位置のダークレベル [カウント]</translation>
    </message>
    <message>
        <source>The map on show</source>
        <translation>表示中のマップ</translation>
    </message>
    <message>
        <source>Scale of the image; drag its two handles to spread the colours, double click for the automatic scale</source>
        <translation>画像のスケール。2 本のハンドルをドラッグすると配色が広がり、ダブルクリックで自動に戻ります</translation>
    </message>
    <message>
        <source>The scale follows the values again</source>
        <translation>スケールを再び値に合わせます</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>Draw all images of the stack over the scale of this one</source>
        <translation>この画像のスケールでスタックの全画像を描きます</translation>
    </message>
    <message>
        <source>Energy of the image</source>
        <translation>画像のエネルギー</translation>
    </message>
    <message>
        <source>Drag over the image to select an area first</source>
        <translation>先に画像の上をドラッグして領域を選択してください</translation>
    </message>
    <message>
        <source>%1 eV</source>
        <translation>%1 eV</translation>
    </message>
</context>
<context>
    <name>ImgProc</name>
    <message>
        <source>Registration</source>
        <translation>位置合わせ</translation>
    </message>
    <message>
        <source>Values of the picture; drag an end to change its colours</source>
        <translation>画像の値。端をドラッグすると色が変わる</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Shows the image, or its edges</source>
        <translation>画像、またはその輪郭を表示する</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>2 値</translation>
    </message>
    <message>
        <source>Shows the binary image: where the image is above the threshold</source>
        <translation>2 値画像を表示する: しきい値を超える画素</translation>
    </message>
    <message>
        <source>Comp.</source>
        <translation>比較</translation>
    </message>
    <message>
        <source>Shows the binary image, moved, against the reference</source>
        <translation>動かした 2 値画像を基準と重ねて表示する</translation>
    </message>
    <message>
        <source>Th.</source>
        <translation>しきい値</translation>
    </message>
    <message>
        <source>Threshold of the binary image: pixels above it are set [counts]</source>
        <translation>2 値画像のしきい値: これを超える画素が立つ [カウント]</translation>
    </message>
    <message>
        <source>Threshold as a fraction of the range from Min to Max [1/1000]; it holds for each image</source>
        <translation>最小から最大までの範囲に対するしきい値の位置 [1/1000]。どの画像にも使われる</translation>
    </message>
    <message>
        <source>Min</source>
        <translation>最小</translation>
    </message>
    <message>
        <source>Lower end of the range of the threshold [counts]</source>
        <translation>しきい値の範囲の下端 [カウント]</translation>
    </message>
    <message>
        <source>Max</source>
        <translation>最大</translation>
    </message>
    <message>
        <source>Upper end of the range of the threshold [counts]</source>
        <translation>しきい値の範囲の上端 [カウント]</translation>
    </message>
    <message>
        <source>Edge Detect</source>
        <translation>輪郭検出</translation>
    </message>
    <message>
        <source>Works on the edges of the image rather than its counts</source>
        <translation>カウントではなく画像の輪郭を使う</translation>
    </message>
    <message>
        <source>Set Ref.</source>
        <translation>基準にする</translation>
    </message>
    <message>
        <source>Takes the binary image on show as the reference</source>
        <translation>表示中の 2 値画像を基準にする</translation>
    </message>
    <message>
        <source>Shift X:</source>
        <translation>移動 X:</translation>
    </message>
    <message>
        <source>Shift to the right [pixels]</source>
        <translation>右への移動量 [画素]</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>Shift downward [pixels]</source>
        <translation>下への移動量 [画素]</translation>
    </message>
    <message>
        <source>One pixel to the left</source>
        <translation>左へ 1 画素</translation>
    </message>
    <message>
        <source>One pixel to the right</source>
        <translation>右へ 1 画素</translation>
    </message>
    <message>
        <source>One pixel up</source>
        <translation>上へ 1 画素</translation>
    </message>
    <message>
        <source>One pixel down</source>
        <translation>下へ 1 画素</translation>
    </message>
    <message>
        <source>S.P.</source>
        <translation>内積</translation>
    </message>
    <message>
        <source>Normalised scalar product of the moved image and the reference; 1 when they are the same</source>
        <translation>動かした画像と基準の規格化した内積。同じなら 1</translation>
    </message>
    <message>
        <source>Auto Shift</source>
        <translation>自動探索</translation>
    </message>
    <message>
        <source>Climbs from the shift in the fields to the greatest product near it</source>
        <translation>欄の移動量から、近くで内積が最大になる移動量を探す</translation>
    </message>
    <message>
        <source>Set Shift</source>
        <translation>移動を設定</translation>
    </message>
    <message>
        <source>Moves the image on show by the shift in the fields</source>
        <translation>表示中の画像を欄の移動量だけ動かす</translation>
    </message>
    <message>
        <source>A. A. Shift</source>
        <translation>毎回自動探索</translation>
    </message>
    <message>
        <source>Searches the shift of each image that is compared</source>
        <translation>比較する画像ごとに移動量を探す</translation>
    </message>
    <message>
        <source>A. Set Shift</source>
        <translation>自動設定</translation>
    </message>
    <message>
        <source>Moves the image at once when its shift was searched</source>
        <translation>移動量が見つかったら、すぐに画像を動かす</translation>
    </message>
    <message>
        <source>Auto All</source>
        <translation>全画像を自動</translation>
    </message>
    <message>
        <source>Searches the shifts of all images of the stack on show, and moves them</source>
        <translation>表示中のスタックのすべての画像の移動量を探し、動かす</translation>
    </message>
    <message>
        <source>What the images of the stack are compared with</source>
        <translation>スタックの画像を何と比べるか</translation>
    </message>
    <message>
        <source>Against the reference</source>
        <translation>基準と比べる</translation>
    </message>
    <message>
        <source>Each against the one before</source>
        <translation>1 つ前の画像と比べる</translation>
    </message>
    <message>
        <source>Clear All Shifts</source>
        <translation>移動をすべて解除</translation>
    </message>
    <message>
        <source>Moves all images of both stacks back</source>
        <translation>両スタックのすべての画像を元の位置に戻す</translation>
    </message>
    <message>
        <source>No image to register: load images in step 1</source>
        <translation>位置合わせする画像がない: 手順 1 で読み込む</translation>
    </message>
    <message>
        <source>No reference yet</source>
        <translation>基準はまだない</translation>
    </message>
    <message>
        <source>Red: the image; green: the reference; yellow: both; grey-blue: outside</source>
        <translation>赤: 画像、緑: 基準、黄: 両方、青灰: 画像の外</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Stops the search; no image is moved then</source>
        <translation>探索を止める。画像は動かない</translation>
    </message>
    <message>
        <source>I0 too</source>
        <translation>I0 も動かす</translation>
    </message>
    <message>
        <source>Auto All moves the I0 image of the nearest energy with each image of I1: for a sample that moves in a beam that stays</source>
        <translation>「全画像を自動」で、I1 の各画像と同じ移動を最も近いエネルギーの I0 画像にも与える: 動かないビームの中で試料が動いた場合</translation>
    </message>
</context>
<context>
    <name>LCFReference</name>
    <message>
        <source>LCF Reference</source>
        <translation>LCF 参照スペクトル</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Show the map of this reference</source>
        <translation>この参照スペクトルのマップを表示する</translation>
    </message>
    <message>
        <source>Weight of this reference in the last single fit [%]</source>
        <translation>直近の単独フィットでのこの参照スペクトルの重み [%]</translation>
    </message>
    <message>
        <source>Edge step that this reference carries in the last single fit: weight times the step of the spectrum</source>
        <translation>直近の単独フィットでこの参照スペクトルが担う吸収端ジャンプ: 重み × スペクトルのジャンプ</translation>
    </message>
    <message>
        <source>Energy shift of the reference [eV], taken off its energies</source>
        <translation>参照スペクトルのエネルギーシフト [eV]。そのエネルギーから差し引かれる</translation>
    </message>
    <message>
        <source>Ref. dMut</source>
        <translation>参照 Δμt</translation>
    </message>
    <message>
        <source>Edge step of the reference</source>
        <translation>参照スペクトルの吸収端ジャンプ</translation>
    </message>
    <message>
        <source>Mid E</source>
        <translation>中点 E</translation>
    </message>
    <message>
        <source>Edge mid point of the reference [eV]</source>
        <translation>参照スペクトルの吸収端の中点 [eV]</translation>
    </message>
    <message>
        <source>Victreen</source>
        <translation>Victoreen</translation>
    </message>
    <message>
        <source>Normalise the reference with Victoreen lines instead of straight ones</source>
        <translation>参照スペクトルを直線ではなく Victoreen 曲線で規格化する</translation>
    </message>
    <message>
        <source>Choose or clear the file; edge and background of this reference</source>
        <translation>ファイルの選択と解除、この参照の吸収端とバックグラウンド</translation>
    </message>
    <message>
        <source>More of this reference</source>
        <translation>この参照の詳細</translation>
    </message>
</context>
<context>
    <name>LcfSection</name>
    <message>
        <source>Load References...</source>
        <translation>参照を読み込む...</translation>
    </message>
    <message>
        <source>Choose files of references, many at once: they come into the rows that are empty</source>
        <translation>参照ファイルを選ぶ (複数可)。空の行に順に入る</translation>
    </message>
    <message>
        <source>Add Ref</source>
        <translation>参照を追加</translation>
    </message>
    <message>
        <source>Add a row for another reference</source>
        <translation>参照スペクトルの行を追加する</translation>
    </message>
    <message>
        <source>Show, Use</source>
        <translation>表示, 使用</translation>
    </message>
    <message>
        <source>Reference</source>
        <translation>参照</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>Δμt</translation>
    </message>
    <message>
        <source>dE [eV]</source>
        <translation>dE [eV]</translation>
    </message>
    <message>
        <source>Fitting Range: </source>
        <translation>フィット範囲: </translation>
    </message>
    <message>
        <source>Start of the fitting range [eV]</source>
        <translation>フィット範囲の始端 [eV]</translation>
    </message>
    <message>
        <source>End of the fitting range [eV]</source>
        <translation>フィット範囲の終端 [eV]</translation>
    </message>
    <message>
        <source>MLCF</source>
        <translation>MLCF</translation>
    </message>
    <message>
        <source>Fit the absorption as it is, with a straight background, instead of the normalised curve: for weak or noisy positions</source>
        <translation>規格化曲線ではなく吸収そのものを直線バックグラウンドとともにフィットする。弱い点やノイズの多い点向け</translation>
    </message>
    <message>
        <source>LCF as Old</source>
        <translation>旧形式の LCF</translation>
    </message>
    <message>
        <source>Fit positions without an edge too, instead of giving them 0</source>
        <translation>吸収端のない点も 0 とせずにフィットする</translation>
    </message>
    <message>
        <source>Own weights</source>
        <translation>各点の重み</translation>
    </message>
    <message>
        <source>Residuals of a map are those of each position&apos;s own fit, not of the weights that the rows show</source>
        <translation>マップの残差を、行に表示中の重みではなく、各点自身のフィットで求める</translation>
    </message>
    <message>
        <source>Zansa</source>
        <translation>残差</translation>
    </message>
    <message>
        <source>Show the map of the residuals of the fits</source>
        <translation>フィットの残差マップを表示する</translation>
    </message>
    <message>
        <source>Residual of the last single fit: mean squared relative deviation over the number of points</source>
        <translation>直近の単独フィットの残差: 相対偏差の二乗平均を点数で割った値</translation>
    </message>
    <message>
        <source>Show View</source>
        <translation>ビュー表示</translation>
    </message>
    <message>
        <source>Show the spectrum with the references in use and their fit, over the energy [eV]</source>
        <translation>使用中の参照スペクトルとフィット結果を重ねてスペクトルを表示する (横軸エネルギー [eV])</translation>
    </message>
    <message>
        <source>Load References</source>
        <translation>参照の読み込み</translation>
    </message>
    <message>
        <source>XAFS Data File (*.dat)</source>
        <translation>XAFS データファイル (*.dat)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Exec. LCF / MLCF Analysis</source>
        <translation>LCF / MLCF 解析を行う</translation>
    </message>
    <message>
        <source>Fit each spectrum as a weighted sum of the references</source>
        <translation>各スペクトルを参照スペクトルの線形結合でフィットする</translation>
    </message>
    <message>
        <source>dE of reference %1</source>
        <translation>参照 %1 の dE</translation>
    </message>
    <message>
        <source>Start of the fitting range</source>
        <translation>フィット範囲の始め</translation>
    </message>
    <message>
        <source>End of the fitting range</source>
        <translation>フィット範囲の終わり</translation>
    </message>
    <message>
        <source>No reference in use: load one above</source>
        <translation>使用中の参照がない: 上で読み込む</translation>
    </message>
    <message>
        <source>No reference in use has a point inside the fitting range and the scan</source>
        <translation>使用中の参照に、フィット範囲とスキャンの中の点がない</translation>
    </message>
    <message>
        <source>fit</source>
        <translation>フィット</translation>
    </message>
    <message>
        <source>No point inside the fitting range: left out</source>
        <translation>フィット範囲に点がないため除外</translation>
    </message>
</context>
<context>
    <name>MapWords</name>
    <message>
        <source>Energy shift map</source>
        <translation>エネルギーシフトマップ</translation>
    </message>
    <message>
        <source>Shift [eV]</source>
        <translation>シフト [eV]</translation>
    </message>
    <message>
        <source>dMut of %1</source>
        <translation>Δμt: %1</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>Δμt</translation>
    </message>
    <message>
        <source>Ratio of %1</source>
        <translation>割合: %1</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>比率</translation>
    </message>
    <message>
        <source>Residual</source>
        <translation>残差</translation>
    </message>
    <message>
        <source>Shift of the edge</source>
        <translation>吸収端のシフト</translation>
    </message>
    <message>
        <source>Shift of the edge [eV]</source>
        <translation>吸収端のシフト [eV]</translation>
    </message>
    <message>
        <source>Outcomes</source>
        <translation>結果の種別</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>結果の種別</translation>
    </message>
    <message>
        <source>dMut of the lines</source>
        <translation>直線間の Δμt</translation>
    </message>
    <message>
        <source>Residual absorption</source>
        <translation>残余吸収</translation>
    </message>
    <message>
        <source>mu t</source>
        <translation>μt</translation>
    </message>
    <message>
        <source>Share of the residual absorption</source>
        <translation>残余吸収の割合</translation>
    </message>
    <message>
        <source>N. dMut of %1</source>
        <translation>規格化 Δμt: %1</translation>
    </message>
    <message>
        <source>Mut+ of %1</source>
        <translation>μt+: %1</translation>
    </message>
    <message>
        <source>Mut- of %1</source>
        <translation>μt-: %1</translation>
    </message>
    <message>
        <source>dE of %1</source>
        <translation>dE: %1</translation>
    </message>
    <message>
        <source>dE [eV]</source>
        <translation>dE [eV]</translation>
    </message>
    <message>
        <source>ROI of %1</source>
        <translation>ROI: %1</translation>
    </message>
    <message>
        <source>N.ROI of %1</source>
        <translation>規格化 ROI: %1</translation>
    </message>
    <message>
        <source>Correlation</source>
        <translation>相関</translation>
    </message>
    <message>
        <source>Cor. Th</source>
        <translation>相関 (しきい値)</translation>
    </message>
    <message>
        <source>Processed map</source>
        <translation>演算したマップ</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>値</translation>
    </message>
    <message>
        <source>Map1</source>
        <translation>マップ 1</translation>
    </message>
    <message>
        <source>Map2</source>
        <translation>マップ 2</translation>
    </message>
    <message>
        <source>Sum of images</source>
        <translation>画像の和</translation>
    </message>
    <message>
        <source>Counts per pixel</source>
        <translation>画素あたりのカウント</translation>
    </message>
</context>
<context>
    <name>MenuBar</name>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>Open I&amp;1 Images...</source>
        <translation>I1 画像を開く(&amp;1)...</translation>
    </message>
    <message>
        <source>Open I&amp;0 Images...</source>
        <translation>I0 画像を開く(&amp;0)...</translation>
    </message>
    <message>
        <source>Open &amp;Dark Image...</source>
        <translation>ダーク画像を開く(&amp;D)...</translation>
    </message>
    <message>
        <source>Save &amp;Image...</source>
        <translation>画像を保存(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Save Data...</source>
        <translation>データを保存(&amp;S)...</translation>
    </message>
    <message>
        <source>Save &amp;All...</source>
        <translation>すべて保存(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Previous Image</source>
        <translation>前の画像(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Next Image</source>
        <translation>次の画像(&amp;N)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>拡大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>縮小(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Whole Image</source>
        <translation>全体表示(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Zoom to Selection</source>
        <translation>選択範囲を拡大(&amp;Z)</translation>
    </message>
    <message>
        <source>&amp;Clear Selection</source>
        <translation>選択を解除(&amp;C)</translation>
    </message>
    <message>
        <source>Set &amp;All</source>
        <translation>全画像に適用(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Windows</source>
        <translation>ウィンドウ(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Spectrum</source>
        <translation>スペクトル(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Calibration</source>
        <translation>較正(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Analyzer</source>
        <translation>解析(&amp;A)</translation>
    </message>
    <message>
        <source>Analyzer&amp;2</source>
        <translation>解析 2(&amp;2)</translation>
    </message>
    <message>
        <source>&amp;Image Processor</source>
        <translation>画像処理(&amp;I)</translation>
    </message>
    <message>
        <source>Back&amp;ground</source>
        <translation>バックグラウンド(&amp;g)</translation>
    </message>
    <message>
        <source>&amp;Batch</source>
        <translation>バッチ(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Messages</source>
        <translation>メッセージ(&amp;M)</translation>
    </message>
    <message>
        <source>Save C&amp;onfiguration</source>
        <translation>保存設定(&amp;o)</translation>
    </message>
    <message>
        <source>&amp;Batch Window</source>
        <translation>バッチウィンドウ(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Open Batch File...</source>
        <translation>バッチファイルを開く(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Execute</source>
        <translation>実行(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>停止(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Gestures and Keys</source>
        <translation>マウス操作とキー(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;About Morvenkite</source>
        <translation>Morvenkite について(&amp;A)</translation>
    </message>
    <message>
        <source>About Morvenkite</source>
        <translation>Morvenkite について</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Morvenkite %1&lt;/h3&gt;&lt;p&gt;Viewer and analyser for imaging XAFS measurements&lt;/p&gt;&lt;p&gt;Qt %2&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Morvenkite %1&lt;/h3&gt;&lt;p&gt;イメージング XAFS 測定データの表示・解析プログラム&lt;/p&gt;&lt;p&gt;Qt %2&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>フォルダを開く(&amp;F)...</translation>
    </message>
    <message>
        <source>A&amp;nalyze or Stop</source>
        <translation>解析または停止(&amp;n)</translation>
    </message>
    <message>
        <source>Stop &amp;Everything</source>
        <translation>すべて停止(&amp;E)</translation>
    </message>
    <message>
        <source>Image A&amp;lone</source>
        <translation>画像だけ(&amp;l)</translation>
    </message>
    <message>
        <source>&amp;Data Step</source>
        <translation>データ(&amp;D)</translation>
    </message>
    <message>
        <source>Spectrum S&amp;tep</source>
        <translation>スペクトル設定(&amp;t)</translation>
    </message>
    <message>
        <source>Sa&amp;ve Step</source>
        <translation>保存(&amp;v)</translation>
    </message>
    <message>
        <source>Analyzing S&amp;pectrum</source>
        <translation>解析中のスペクトル(&amp;p)</translation>
    </message>
    <message>
        <source>&amp;Next Region</source>
        <translation>次の領域(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Reset Layout</source>
        <translation>配置を戻す(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Recent Folders</source>
        <translation>最近のフォルダ(&amp;R)</translation>
    </message>
    <message>
        <source>No folder was opened yet</source>
        <translation>まだ開いたフォルダはありません</translation>
    </message>
    <message>
        <source>S&amp;quare Pixels</source>
        <translation>正方画素(&amp;q)</translation>
    </message>
    <message>
        <source>S&amp;ections</source>
        <translation>断面(&amp;e)</translation>
    </message>
    <message>
        <source>C&amp;olours</source>
        <translation>配色(&amp;o)</translation>
    </message>
    <message>
        <source>As the &amp;Desktop</source>
        <translation>デスクトップに合わせる(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>明るい(&amp;L)</translation>
    </message>
    <message>
        <source>D&amp;ark</source>
        <translation>暗い(&amp;a)</translation>
    </message>
    <message>
        <source>&amp;History</source>
        <translation>履歴(&amp;H)</translation>
    </message>
    <message>
        <source>No session was saved yet</source>
        <translation>まだ保存したセッションはありません</translation>
    </message>
    <message>
        <source>&amp;Open Session...</source>
        <translation>セッションを開く(&amp;O)...</translation>
    </message>
    <message>
        <source>Sa&amp;ve Session...</source>
        <translation>セッションを保存(&amp;v)...</translation>
    </message>
    <message>
        <source>Recen&amp;t Sessions</source>
        <translation>最近のセッション(&amp;t)</translation>
    </message>
</context>
<context>
    <name>Messages</name>
    <message>
        <source>Save Messages</source>
        <translation>メッセージの保存</translation>
    </message>
    <message>
        <source>Text File (*.txt)</source>
        <translation>テキストファイル (*.txt)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>メッセージ</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>保存...</translation>
    </message>
    <message>
        <source>Drop all messages</source>
        <translation>すべてのメッセージを消去する</translation>
    </message>
    <message>
        <source>Save all messages as a text file</source>
        <translation>すべてのメッセージをテキストファイルに保存する</translation>
    </message>
    <message>
        <source>Copy what is selected, or all messages, to the clipboard</source>
        <translation>選択部分、またはすべてのメッセージをクリップボードにコピーする</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Ready</source>
        <translation>準備完了</translation>
    </message>
</context>
<context>
    <name>NumberFields</name>
    <message>
        <source>This is no whole number: it counts as 0</source>
        <translation>整数ではないため 0 として扱われます</translation>
    </message>
    <message>
        <source>This is no number: it counts as 0</source>
        <translation>数値ではないので 0 とみなします</translation>
    </message>
</context>
<context>
    <name>Outcome</name>
    <message>
        <source>not walked</source>
        <translation>未解析</translation>
    </message>
    <message>
        <source>fitted</source>
        <translation>フィット済み</translation>
    </message>
    <message>
        <source>no points</source>
        <translation>点なし</translation>
    </message>
    <message>
        <source>no pre-edge points</source>
        <translation>吸収端前の点なし</translation>
    </message>
    <message>
        <source>no post-edge points</source>
        <translation>吸収端後の点なし</translation>
    </message>
    <message>
        <source>step not above 0</source>
        <translation>段差が 0 以下</translation>
    </message>
    <message>
        <source>mid point outside the window</source>
        <translation>中点が指定範囲外</translation>
    </message>
    <message>
        <source>mid point outside the scan</source>
        <translation>中点が測定範囲外</translation>
    </message>
    <message>
        <source>too noisy for the threshold</source>
        <translation>閾値に対しノイズ過大</translation>
    </message>
    <message>
        <source>gap unsound</source>
        <translation>間隔が不適</translation>
    </message>
    <message>
        <source>undefined</source>
        <translation>未定義</translation>
    </message>
    <message>
        <source>outside a moved image</source>
        <translation>動かした画像の外</translation>
    </message>
</context>
<context>
    <name>PairDoubt</name>
    <message>
        <source>I1 has %1 pixels, I0 %2: they do not belong together</source>
        <translation>画素数が I1 は %1、I0 は %2 で、組にならない</translation>
    </message>
    <message>
        <source>I1 has %1 images, I0 %2</source>
        <translation>画像数: I1 は %1、I0 は %2</translation>
    </message>
</context>
<context>
    <name>Panels</name>
    <message>
        <source>Spectrum at the position</source>
        <translation>カーソル位置のスペクトル</translation>
    </message>
    <message>
        <source>BG Specturm</source>
        <translation>BG スペクトル</translation>
    </message>
    <message>
        <source>No background spectrum: load one in step 1</source>
        <translation>バックグラウンドスペクトルがありません: ステップ 1 で読み込んでください</translation>
    </message>
</context>
<context>
    <name>RangeRow</name>
    <message>
        <source>All values</source>
        <translation>すべての値</translation>
    </message>
    <message>
        <source>Each image</source>
        <translation>画像ごと</translation>
    </message>
    <message>
        <source>Typed</source>
        <translation>入力値</translation>
    </message>
    <message>
        <source>Grey</source>
        <translation>グレー</translation>
    </message>
    <message>
        <source>Hot</source>
        <translation>ホット</translation>
    </message>
    <message>
        <source>Viridis</source>
        <translation>Viridis</translation>
    </message>
    <message>
        <source>Cividis</source>
        <translation>Cividis</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>スケール</translation>
    </message>
    <message>
        <source>Scale Min.</source>
        <translation>スケール最小</translation>
    </message>
    <message>
        <source>Value of the lowest colour</source>
        <translation>最も低い色の値</translation>
    </message>
    <message>
        <source>Scale Max.</source>
        <translation>スケール最大</translation>
    </message>
    <message>
        <source>Value of the highest colour</source>
        <translation>最も高い色の値</translation>
    </message>
    <message>
        <source>Colours of image and bar</source>
        <translation>画像とバーの配色</translation>
    </message>
    <message>
        <source>Share of the values that the scale spans</source>
        <translation>スケールが含む値の割合</translation>
    </message>
</context>
<context>
    <name>RegistrationConductor</name>
    <message>
        <source>This image is moved by %1; %2 of %3 images are moved</source>
        <translation>この画像の移動は %1。%3 枚のうち %2 枚を移動済み</translation>
    </message>
    <message>
        <source>No images: load them in step 1</source>
        <translation>画像がない: 手順 1 で読み込む</translation>
    </message>
    <message>
        <source>No reference: press Set Ref. on one of the images</source>
        <translation>基準がない: どれかの画像で「基準にする」を押す</translation>
    </message>
    <message>
        <source>Image %1 of %2</source>
        <translation>%2 の画像 %1</translation>
    </message>
</context>
<context>
    <name>Remark</name>
    <message>
        <source>edge at %1 eV; the steepest slope is at %2 eV; uneven steps: use Suggest Elm.</source>
        <translation>吸収端 %1 eV、最も急な傾きは %2 eV。ステップが不均一: 「元素を指定」を使ってください</translation>
    </message>
    <message>
        <source>the suggested edge is at %1 eV; the steepest slope is at %2 eV</source>
        <translation>指定した吸収端は %1 eV、最も急な傾きは %2 eV</translation>
    </message>
    <message>
        <source>%1 columns: the first two are taken as energy and mu</source>
        <translation>%1 列: 最初の 2 列をエネルギーと mu として使用</translation>
    </message>
    <message>
        <source>%1 columns (%2): the first two are taken as energy and mu</source>
        <translation>%1 列 (%2): 最初の 2 列をエネルギーと mu として使用</translation>
    </message>
    <message>
        <source>the largest energy is %1 eV: are the energies in keV?</source>
        <translation>最大エネルギーは %1 eV: 単位は keV ではありませんか?</translation>
    </message>
    <message>
        <source>no edge that can be trusted (%1)</source>
        <translation>信頼できる吸収端がありません (%1)</translation>
    </message>
</context>
<context>
    <name>ResidualSection</name>
    <message>
        <source>Energy at which both lines of the edge are read: mut is the pre-edge line there, dmut the distance to the post-edge line [eV]</source>
        <translation>両直線を読むエネルギー: mut はそこでのプレエッジ直線の値、dmut はポストエッジ直線との差 [eV]</translation>
    </message>
    <message>
        <source>How many times dmut the element absorbs below its edge, no unit: that much is taken off</source>
        <translation>元素が吸収端より下で dmut の何倍を吸収するか (単位なし): その分を引きます</translation>
    </message>
    <message>
        <source>Show dmut</source>
        <translation>dmut 表示</translation>
    </message>
    <message>
        <source>Show the map of the distances between both lines at the energy</source>
        <translation>そのエネルギーでの両直線の差のマップを表示します</translation>
    </message>
    <message>
        <source>dmut of the last spectrum, no unit</source>
        <translation>最後のスペクトルの dmut (単位なし)</translation>
    </message>
    <message>
        <source>Show the Rest</source>
        <translation>Rest 表示</translation>
    </message>
    <message>
        <source>Show the map of the rest, Res</source>
        <translation>残余吸収 Res のマップを表示します</translation>
    </message>
    <message>
        <source>Rest of the last spectrum, no unit</source>
        <translation>最後のスペクトルの残余吸収 (単位なし)</translation>
    </message>
    <message>
        <source>Show Ratio</source>
        <translation>比を表示</translation>
    </message>
    <message>
        <source>Show the map of the rest, counted from the least of the map, over the sum of it and dmut</source>
        <translation>マップの最小値から数えた残余吸収と、それと dmut の和との比のマップを表示します</translation>
    </message>
    <message>
        <source>Residual Absorption Analysis</source>
        <translation>残余吸収解析</translation>
    </message>
    <message>
        <source>Find how much of the absorption is not that of the element of the edge</source>
        <translation>吸収端の元素によらない吸収を求めます</translation>
    </message>
    <message>
        <source>Find the rest of each block of the selected area</source>
        <translation>選択領域の各ブロックの残余吸収を求めます</translation>
    </message>
    <message>
        <source>Stop the analysis; the maps keep what is done</source>
        <translation>解析を中止します; 済んだ分はマップに残ります</translation>
    </message>
    <message>
        <source>Energy of the residual absorption</source>
        <translation>残余吸収のエネルギー</translation>
    </message>
    <message>
        <source>Factor of the residual absorption</source>
        <translation>残余吸収の係数</translation>
    </message>
</context>
<context>
    <name>RunRow</name>
    <message>
        <source>Another analysis runs</source>
        <translation>別の解析が実行中</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Analyze</source>
        <translation>解析実行</translation>
    </message>
    <message>
        <source>stopped at %1 %</source>
        <translation>%1 % で停止</translation>
    </message>
    <message>
        <source>How much of the run is done [%]</source>
        <translation>処理の進み [%]</translation>
    </message>
</context>
<context>
    <name>SaveBox</name>
    <message>
        <source>Save and Extra</source>
        <translation>保存・その他</translation>
    </message>
    <message>
        <source>Save Img/Data</source>
        <translation>画像/データの保存</translation>
    </message>
    <message>
        <source>Save what the image area shows, and the colour bar, as pictures</source>
        <translation>画像領域の表示内容とカラーバーを画像として保存する</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>画像を保存</translation>
    </message>
    <message>
        <source>Save both kinds of map of the reference on show as pictures</source>
        <translation>表示中の参照スペクトルの 2 種類のマップを画像として保存する</translation>
    </message>
    <message>
        <source>Save All Images</source>
        <translation>全画像を保存</translation>
    </message>
    <message>
        <source>Write flat.dat and dark.dat of the image size</source>
        <translation>画像サイズの flat.dat と dark.dat を書き出す</translation>
    </message>
    <message>
        <source>Save Flat Dark</source>
        <translation>フラット/ダークを保存</translation>
    </message>
    <message>
        <source>Save the values of the shown result map as TIFF or text</source>
        <translation>表示中の結果マップの値を TIFF またはテキストで保存する</translation>
    </message>
    <message>
        <source>Save Data</source>
        <translation>データを保存</translation>
    </message>
    <message>
        <source>Choose TIFF or text, scale and layout of saved data</source>
        <translation>保存するデータの形式 (TIFF/テキスト)、スケール、並びを選ぶ</translation>
    </message>
    <message>
        <source>Save Data Cfg.</source>
        <translation>データ保存設定</translation>
    </message>
    <message>
        <source>Save Proc. Data</source>
        <translation>処理データの保存</translation>
    </message>
    <message>
        <source>Normalised spectrum of each point of the area</source>
        <translation>領域内の各点の規格化スペクトル</translation>
    </message>
    <message>
        <source>Normalized XAFS</source>
        <translation>規格化 XAFS</translation>
    </message>
    <message>
        <source>Absorption spectrum of each point of the area</source>
        <translation>領域内の各点の吸収スペクトル</translation>
    </message>
    <message>
        <source>Raw XAFS</source>
        <translation>未規格化 XAFS</translation>
    </message>
    <message>
        <source>I1 counts of each point of the area</source>
        <translation>領域内の各点の I1 カウント</translation>
    </message>
    <message>
        <source>Raw</source>
        <translation>生データ</translation>
    </message>
    <message>
        <source>Write the spectra of all points of the area as text</source>
        <translation>領域内の全点のスペクトルをテキストで書き出す</translation>
    </message>
    <message>
        <source>Save Each Spectrum</source>
        <translation>各点スペクトルを保存</translation>
    </message>
    <message>
        <source>DeGlitch</source>
        <translation>グリッチ除去</translation>
    </message>
    <message>
        <source>Replace values of the shown result map that stand out from their neighbours</source>
        <translation>表示中の結果マップで周囲から突出した値を置き換える</translation>
    </message>
    <message>
        <source>Show and save the filtered values of the result map</source>
        <translation>結果マップのフィルター後の値を表示・保存する</translation>
    </message>
    <message>
        <source>Show Filtered</source>
        <translation>フィルター後を表示</translation>
    </message>
    <message>
        <source>Extra</source>
        <translation>その他</translation>
    </message>
    <message>
        <source>Fourier analysis of the intensity over the stack, into the log</source>
        <translation>スタックにわたる強度をフーリエ解析し、ログに出力する</translation>
    </message>
    <message>
        <source>Fourier A.</source>
        <translation>フーリエ解析</translation>
    </message>
    <message>
        <source>Write all values of the shown result map into the log</source>
        <translation>表示中の結果マップの全値をログに出力する</translation>
    </message>
    <message>
        <source>Chk Vals</source>
        <translation>値を確認</translation>
    </message>
    <message>
        <source>Stop; no file is written</source>
        <translation>停止 (ファイルは書かれません)</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
</context>
<context>
    <name>SaveConductor</name>
    <message>
        <source>Save Data</source>
        <translation>データを保存</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>すべて保存</translation>
    </message>
    <message>
        <source>Image File (*.png)</source>
        <translation>画像ファイル (*.png)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>画像を保存</translation>
    </message>
    <message>
        <source>Save All Images</source>
        <translation>全画像を保存</translation>
    </message>
    <message>
        <source>Data File (*.dat)</source>
        <translation>データファイル (*.dat)</translation>
    </message>
    <message>
        <source>Tiff File (*.tif)</source>
        <translation>TIFF ファイル (*.tif)</translation>
    </message>
    <message>
        <source>%1 could not be written, see Messages</source>
        <translation>%1 を書き込めませんでした。メッセージを見てください</translation>
    </message>
</context>
<context>
    <name>SaveDataCfg</name>
    <message>
        <source>Save Data Configuration</source>
        <translation>データ保存設定</translation>
    </message>
    <message>
        <source>Save as Tiff</source>
        <translation>TIFF で保存</translation>
    </message>
    <message>
        <source>Save the shown map as a 16-bit TIFF file</source>
        <translation>表示中のマップを 16 ビット TIFF ファイルとして保存する</translation>
    </message>
    <message>
        <source>Fixed Scale</source>
        <translation>スケール固定</translation>
    </message>
    <message>
        <source>Spread the values from Min to Max over the 16 bits, instead of the range of the map</source>
        <translation>マップの値の範囲ではなく、最小から最大までを 16 ビットに割り当てる</translation>
    </message>
    <message>
        <source>Min</source>
        <translation>最小</translation>
    </message>
    <message>
        <source>Map value that becomes 0, in the unit of the map</source>
        <translation>0 とするマップの値 (マップの単位)</translation>
    </message>
    <message>
        <source>  Max</source>
        <translation>  最大</translation>
    </message>
    <message>
        <source>Map value that becomes 65535, in the unit of the map</source>
        <translation>65535 とするマップの値 (マップの単位)</translation>
    </message>
    <message>
        <source>Save as Analyzed Area Size and Resolution</source>
        <translation>解析領域の大きさと分解能で保存</translation>
    </message>
    <message>
        <source>One value for each analysed block instead of one for each pixel of the image</source>
        <translation>画像の画素ごとではなく、解析したブロックごとに 1 つの値を保存する</translation>
    </message>
    <message>
        <source>Save as Text data</source>
        <translation>テキストデータで保存</translation>
    </message>
    <message>
        <source>Save the analysed positions of the shown map as text</source>
        <translation>表示中のマップの解析位置をテキストとして保存する</translation>
    </message>
    <message>
        <source>Comma Separated</source>
        <translation>コンマ区切り</translation>
    </message>
    <message>
        <source>Space Separated</source>
        <translation>空白区切り</translation>
    </message>
    <message>
        <source>X Y Val : 1point/1line</source>
        <translation>X Y 値 : 1 点 / 1 行</translation>
    </message>
    <message>
        <source>Each position on a line of its own; X and Y in pixels of the image</source>
        <translation>1 行に 1 点ずつ書く。X と Y は画像の画素座標</translation>
    </message>
    <message>
        <source>Val1 Val2 Val3... : each Y line</source>
        <translation>値1 値2 値3... : Y ごとに 1 行</translation>
    </message>
    <message>
        <source>The values of a row of positions on one line</source>
        <translation>横 1 列の位置の値を 1 行に書く</translation>
    </message>
    <message>
        <source>Values separated by a comma</source>
        <translation>値をコンマで区切る</translation>
    </message>
    <message>
        <source>Values separated by a blank</source>
        <translation>値を空白で区切る</translation>
    </message>
    <message>
        <source>Save as 32-bit float Tiff</source>
        <translation>32 ビット浮動小数点 TIFF で保存</translation>
    </message>
    <message>
        <source>Save the shown map as a TIFF file of its values as they are, without a scale</source>
        <translation>表示中のマップを、スケールなしの値そのままの TIFF ファイルとして保存する</translation>
    </message>
    <message>
        <source>Clamp</source>
        <translation>クランプ</translation>
    </message>
    <message>
        <source>Cut values outside the scale to its ends; without it they wrap round in an image of one value for each pixel</source>
        <translation>スケール外の値を端の値に置き換える。オフにすると、画素ごとに 1 値の画像では値が一周して折り返す</translation>
    </message>
    <message>
        <source>Scale Min</source>
        <translation>スケール最小</translation>
    </message>
    <message>
        <source>Scale Max</source>
        <translation>スケール最大</translation>
    </message>
</context>
<context>
    <name>SelectDataFiles</name>
    <message>
        <source>Data Files</source>
        <translation>データファイル</translation>
    </message>
    <message>
        <source>Files that are loaded; the chosen one is shown</source>
        <translation>読み込んだファイル。選んだものが表示される</translation>
    </message>
    <message>
        <source>Number of files that are loaded</source>
        <translation>読み込んだファイルの数</translation>
    </message>
    <message>
        <source>Choose image files and load them</source>
        <translation>画像ファイルを選択して読み込む</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>The next selection replaces the stack</source>
        <translation>次に選択したファイルでスタックを置き換える</translation>
    </message>
    <message>
        <source>New</source>
        <translation>新規</translation>
    </message>
    <message>
        <source>The next selection is added to the stack</source>
        <translation>次に選択したファイルをスタックに追加する</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Forget all files and images of the stack</source>
        <translation>スタックのファイルと画像をすべて破棄する</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>How the energy of each file is found</source>
        <translation>各ファイルのエネルギーの求め方</translation>
    </message>
    <message>
        <source>Setup</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Display while loading, bad pixels, dark area</source>
        <translation>読込中の表示、不良画素、ダーク領域</translation>
    </message>
    <message>
        <source>Add. Setup</source>
        <translation>追加設定</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>間引き</translation>
    </message>
    <message>
        <source>Step through the selection: 2 loads every other file</source>
        <translation>選択したファイルを読む間隔: 2 なら 1 つおきに読み込む</translation>
    </message>
    <message>
        <source>Cut F.</source>
        <translation>先頭除外</translation>
    </message>
    <message>
        <source>Files left out at the start of the selection</source>
        <translation>選択の先頭で読み飛ばすファイル数</translation>
    </message>
    <message>
        <source>Cut L.</source>
        <translation>末尾除外</translation>
    </message>
    <message>
        <source>Files left out at the end of the selection</source>
        <translation>選択の末尾で読み飛ばすファイル数</translation>
    </message>
    <message>
        <source>Exp.</source>
        <translation>露光</translation>
    </message>
    <message>
        <source>Exposure time of the images [ms], from the files; on red when they differ; may be overruled</source>
        <translation>画像の露光時間 [ms]。ファイルから読み取り、不揃いのときは赤で示す。変更可</translation>
    </message>
    <message>
        <source>Select %1</source>
        <translation>%1を選択</translation>
    </message>
    <message>
        <source>Select Energies of %1</source>
        <translation>%1のエネルギーを選択</translation>
    </message>
    <message>
        <source>Select Bad Pixels of %1</source>
        <translation>%1の不良画素を選択</translation>
    </message>
    <message>
        <source>Energies of the files that are loaded</source>
        <translation>読み込んだファイルのエネルギー</translation>
    </message>
    <message>
        <source>%1 eV</source>
        <translation>%1 eV</translation>
    </message>
    <message>
        <source>%1 - %2 eV</source>
        <translation>%1 - %2 eV</translation>
    </message>
</context>
<context>
    <name>SelectDataFilesAdditionalSetup</name>
    <message>
        <source>Additional Setup</source>
        <translation>追加設定</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>読込</translation>
    </message>
    <message>
        <source>Show Latest Image on Load</source>
        <translation>読込中に最新の画像を表示</translation>
    </message>
    <message>
        <source>Show each image as it arrives</source>
        <translation>読み込んだ画像を順次表示する</translation>
    </message>
    <message>
        <source>Ignore  &apos;Live&apos; file</source>
        <translation>&apos;Live&apos; ファイルを無視</translation>
    </message>
    <message>
        <source>Pass over files with &quot;Live&quot; in their path</source>
        <translation>パスに &quot;Live&quot; を含むファイルを読み飛ばす</translation>
    </message>
    <message>
        <source>Bad Pixels</source>
        <translation>不良画素</translation>
    </message>
    <message>
        <source>Select Err. Ps. Def.</source>
        <translation>不良画素リストを選択</translation>
    </message>
    <message>
        <source>Choose the list of bad pixels</source>
        <translation>不良画素のリストを選択する</translation>
    </message>
    <message>
        <source>Use Err Points Mask</source>
        <translation>不良画素マスクを使用</translation>
    </message>
    <message>
        <source>Correct the bad pixels of images read from now on</source>
        <translation>これ以降に読み込む画像の不良画素を補正する</translation>
    </message>
    <message>
        <source>Dark Area</source>
        <translation>ダーク領域</translation>
    </message>
    <message>
        <source>Set Dark Area</source>
        <translation>ダーク領域を設定</translation>
    </message>
    <message>
        <source>The selected area gives the dark level of each image</source>
        <translation>選択領域から各画像のダークレベルを求める</translation>
    </message>
    <message>
        <source>Up Date</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Take the dark level of all images anew</source>
        <translation>全画像のダークレベルを求め直す</translation>
    </message>
    <message>
        <source>CLR</source>
        <translation>解除</translation>
    </message>
    <message>
        <source>Work without a dark area</source>
        <translation>ダーク領域を使わない</translation>
    </message>
    <message>
        <source>Dark Area:</source>
        <translation>ダーク領域:</translation>
    </message>
    <message>
        <source>Corners of the dark area [pixels]</source>
        <translation>ダーク領域の角の座標 [画素]</translation>
    </message>
</context>
<context>
    <name>SelectImgDialog</name>
    <message>
        <source>Select Images</source>
        <translation>画像の選択</translation>
    </message>
    <message>
        <source>BRNX Files, IMG Files, Tiff Files (*.dat *.img *.tif *.tiff)</source>
        <translation>BRNX、IMG、TIFF ファイル (*.dat *.img *.tif *.tiff)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
</context>
<context>
    <name>SeriesTable</name>
    <message>
        <source>Use as</source>
        <translation>用途</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>画像の組</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>ファイル数</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>画素数</translation>
    </message>
    <message>
        <source>I1</source>
        <translation>I1</translation>
    </message>
    <message>
        <source>I0</source>
        <translation>I0</translation>
    </message>
    <message>
        <source>dark</source>
        <translation>ダーク</translation>
    </message>
    <message>
        <source>%1
to %2</source>
        <translation>%1
～ %2</translation>
    </message>
</context>
<context>
    <name>Sessions</name>
    <message>
        <source>Session (*.session)</source>
        <translation>セッション (*.session)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Save Session</source>
        <translation>セッションの保存</translation>
    </message>
    <message>
        <source>Open Session</source>
        <translation>セッションを開く</translation>
    </message>
</context>
<context>
    <name>Shell</name>
    <message>
        <source>Select Reference %1</source>
        <translation>参照スペクトル %1 を選択</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>保存しました: %1</translation>
    </message>
    <message>
        <source>The batch is at: %1</source>
        <translation>バッチ実行中: %1</translation>
    </message>
    <message>
        <source>%1 + %2 images are loaded</source>
        <translation>%1 + %2 枚の画像を読み込みました</translation>
    </message>
    <message>
        <source>%1, and %2 files could not be read</source>
        <translation>%1。%2 ファイルは読めませんでした</translation>
    </message>
    <message>
        <source>The analysis was stopped: the maps are in part</source>
        <translation>解析を停止しました: マップは途中までです</translation>
    </message>
    <message>
        <source>Maps of 1 reference are ready</source>
        <translation>参照 1 個のマップができました</translation>
    </message>
    <message>
        <source>Maps of %1 references are ready</source>
        <translation>参照 %1 個のマップができました</translation>
    </message>
    <message>
        <source>The energy shift map is ready, and in force</source>
        <translation>エネルギーシフトマップができ、適用されています</translation>
    </message>
    <message>
        <source>The calibration was stopped</source>
        <translation>較正を停止しました</translation>
    </message>
    <message>
        <source>The maps are ready</source>
        <translation>マップができました</translation>
    </message>
    <message>
        <source>Stops all that runs: loading, analyses, calibration, batch</source>
        <translation>実行中のものをすべて停止: 読み込み、解析、較正、バッチ</translation>
    </message>
    <message>
        <source>The images of the stack are moved to where they agree</source>
        <translation>スタックの画像を一致する位置に動かしました</translation>
    </message>
    <message>
        <source>The registration was stopped: no image is moved</source>
        <translation>位置合わせは停止されました: 画像は動いていません</translation>
    </message>
</context>
<context>
    <name>SpectrumBox</name>
    <message>
        <source>Spectrum</source>
        <translation>スペクトル</translation>
    </message>
    <message>
        <source>xw</source>
        <translation>半幅 x</translation>
    </message>
    <message>
        <source>Half width of the averaging block in x [pixels]; the block spans 2 xw + 1</source>
        <translation>平均ブロックの x 方向の半幅 [画素]。ブロックの幅は 2 × 半幅 + 1</translation>
    </message>
    <message>
        <source>yw</source>
        <translation>半幅 y</translation>
    </message>
    <message>
        <source>Half width of the averaging block in y [pixels]; the block spans 2 yw + 1</source>
        <translation>平均ブロックの y 方向の半幅 [画素]。ブロックの幅は 2 × 半幅 + 1</translation>
    </message>
    <message>
        <source>[pix]</source>
        <translation>[画素]</translation>
    </message>
    <message>
        <source>dPreE</source>
        <translation>プリ終端</translation>
    </message>
    <message>
        <source>End of the pre-edge range, relative to the edge [eV]</source>
        <translation>プリエッジ範囲の終端 (吸収端からの相対値) [eV]</translation>
    </message>
    <message>
        <source>dPostS</source>
        <translation>ポスト始端</translation>
    </message>
    <message>
        <source>Start of the post-edge range, relative to the edge [eV]</source>
        <translation>ポストエッジ範囲の始端 (吸収端からの相対値) [eV]</translation>
    </message>
    <message>
        <source>Look for the edge only near the energy given here</source>
        <translation>ここで指定したエネルギーの近傍だけで吸収端を探す</translation>
    </message>
    <message>
        <source>Suggest Elm.</source>
        <translation>元素を指定</translation>
    </message>
    <message>
        <source>Symbol of the element</source>
        <translation>元素記号</translation>
    </message>
    <message>
        <source>Absorption edge of the element</source>
        <translation>元素の吸収端</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>吸収端</translation>
    </message>
    <message>
        <source>Energy of the suggested edge [eV]; follows element and edge, may be overruled</source>
        <translation>指定した吸収端のエネルギー [eV]。元素と吸収端から決まるが変更可</translation>
    </message>
    <message>
        <source>Normalise the references by the suggested edge and its ranges too</source>
        <translation>参照スペクトルも、指定した吸収端とその範囲で規格化する</translation>
    </message>
    <message>
        <source>Also for Refs.</source>
        <translation>参照にも</translation>
    </message>
    <message>
        <source>Th. Jmp.</source>
        <translation>ジャンプ閾値</translation>
    </message>
    <message>
        <source>An edge counts when its step exceeds this many times the noise of both lines</source>
        <translation>ジャンプがプリエッジ・ポストエッジ両直線の雑音のこの倍数を超えたとき吸収端とみなす</translation>
    </message>
    <message>
        <source>sgm.</source>
        <translation>σ</translation>
    </message>
    <message>
        <source>Where the lines before and after the edge come too close, continue the normalised curve by the edge step</source>
        <translation>吸収端前後の線が近づきすぎる所では、規格化曲線を吸収端の段差で続ける</translation>
    </message>
    <message>
        <source>Hold Gap</source>
        <translation>間隔を保持</translation>
    </message>
    <message>
        <source>I0:</source>
        <translation>I0:</translation>
    </message>
    <message>
        <source>Divide the sample images (I1) by the I0 images of the same energy</source>
        <translation>試料画像 (I1) を同じエネルギーの I0 画像で割る</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>Fluorescence yield I1 / I0 in place of the absorption ln(I0 / I1)</source>
        <translation>吸収 ln(I0 / I1) の代わりに蛍光収量 I1 / I0 を用いる</translation>
    </message>
    <message>
        <source>Fluo. Type</source>
        <translation>蛍光法</translation>
    </message>
</context>
<context>
    <name>StackConductor</name>
    <message>
        <source>Energies do not rise: %1 eV (%2), then %3 eV (%4)</source>
        <translation>エネルギーが増加していない: %1 eV (%2) の次が %3 eV (%4)</translation>
    </message>
    <message>
        <source>Two images of one energy: %1 eV (%2) and %3 eV (%4)</source>
        <translation>同じエネルギーの画像が 2 枚ある: %1 eV (%2) と %3 eV (%4)</translation>
    </message>
</context>
<context>
    <name>StepBar</name>
    <message>
        <source>Data</source>
        <translation>データ</translation>
    </message>
    <message>
        <source>Spectrum</source>
        <translation>スペクトル</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>較正</translation>
    </message>
    <message>
        <source>Analyzer</source>
        <translation>解析</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Spectrum under the cursor</source>
        <translation>カーソル位置のスペクトル</translation>
    </message>
    <message>
        <source>Registration of shifted images</source>
        <translation>ずれた画像の位置合わせ</translation>
    </message>
    <message>
        <source>Img. Proc.</source>
        <translation>画像処理</translation>
    </message>
    <message>
        <source>Batch text, its run and its log</source>
        <translation>バッチのテキスト、実行、ログ</translation>
    </message>
    <message>
        <source>Batch Ctrl.</source>
        <translation>バッチ</translation>
    </message>
    <message>
        <source>Quality of the data and dark check</source>
        <translation>データの質とダークの確認</translation>
    </message>
    <message>
        <source>Analyzer2</source>
        <translation>解析 2</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>手順</translation>
    </message>
    <message>
        <source>Analysis</source>
        <translation>解析</translation>
    </message>
</context>
<context>
    <name>StepStates</name>
    <message>
        <source>1 reference</source>
        <translation>参照 1 個</translation>
    </message>
    <message>
        <source>%1 references</source>
        <translation>参照 %1 個</translation>
    </message>
    <message>
        <source>running, %1 %</source>
        <translation>実行中 %1 %</translation>
    </message>
    <message>
        <source>%1 is no number</source>
        <translation>%1 が数値でない</translation>
    </message>
    <message>
        <source>No number, and counts as 0: %1</source>
        <translation>数値でないため 0 とみなします: %1</translation>
    </message>
    <message>
        <source>sizes differ</source>
        <translation>大きさが違う</translation>
    </message>
    <message>
        <source>I1 has %1 pixels, I0 has %2: they do not belong together</source>
        <translation>I1 は %1 画素、I0 は %2 画素: 組み合わせられません</translation>
    </message>
    <message>
        <source>energies not set</source>
        <translation>エネルギー未設定</translation>
    </message>
    <message>
        <source>files failed: %1</source>
        <translation>失敗ファイル: %1</translation>
    </message>
    <message>
        <source>%1: %2 files could not be read, see Messages</source>
        <translation>%1: %2 ファイルを読めませんでした。メッセージを見てください</translation>
    </message>
    <message>
        <source>I0 not used</source>
        <translation>I0 未使用</translation>
    </message>
    <message>
        <source>I0 is loaded and not used</source>
        <translation>I0 は読み込まれていますが使われていません</translation>
    </message>
    <message>
        <source>%1 images</source>
        <translation>%1 枚</translation>
    </message>
    <message>
        <source>I1 has %1 images, I0 has %2: I0 is interpolated in energy</source>
        <translation>I1 は %1 枚、I0 は %2 枚: I0 はエネルギーで補間します</translation>
    </message>
    <message>
        <source>exposures differ</source>
        <translation>露光時間が違う</translation>
    </message>
    <message>
        <source>%1: the exposures of its images differ</source>
        <translation>%1: 画像の露光時間が一致しません</translation>
    </message>
    <message>
        <source>Loading images</source>
        <translation>画像を読み込んでいます</translation>
    </message>
    <message>
        <source>no images</source>
        <translation>画像なし</translation>
    </message>
    <message>
        <source>Drop a folder or files anywhere, or open them here</source>
        <translation>フォルダかファイルをどこにでもドロップ、またはここで開く</translation>
    </message>
    <message>
        <source>%1 I0 images, no I1</source>
        <translation>I0 %1 枚、I1 なし</translation>
    </message>
    <message>
        <source>Load the images through the sample, I1</source>
        <translation>試料を通した画像 I1 を読み込んでください</translation>
    </message>
    <message>
        <source>%1, %2 - %3 eV</source>
        <translation>%1, %2 - %3 eV</translation>
    </message>
    <message>
        <source>Images are loaded, and I0 is used</source>
        <translation>画像は読み込み済みで、I0 を使っています</translation>
    </message>
    <message>
        <source>Images are loaded, without I0</source>
        <translation>画像は読み込み済みです (I0 なし)</translation>
    </message>
    <message>
        <source>block %1</source>
        <translation>ブロック %1</translation>
    </message>
    <message>
        <source>Block, ranges and element of all spectra</source>
        <translation>全スペクトルのブロック、範囲、元素</translation>
    </message>
    <message>
        <source>%1, no edge here</source>
        <translation>%1、ここに端なし</translation>
    </message>
    <message>
        <source>No edge at the cursor</source>
        <translation>カーソル位置に吸収端がありません</translation>
    </message>
    <message>
        <source>%1, edge %2 eV</source>
        <translation>%1、端 %2 eV</translation>
    </message>
    <message>
        <source>The spectrum at the cursor has an edge at %1 eV</source>
        <translation>カーソル位置の吸収端は %1 eV です</translation>
    </message>
    <message>
        <source>Comparing each block with the standard</source>
        <translation>各ブロックを標準と比べています</translation>
    </message>
    <message>
        <source>stopped: map in part</source>
        <translation>停止: マップは途中</translation>
    </message>
    <message>
        <source>The calibration was stopped: positions not reached have no shift</source>
        <translation>較正を停止しました: 未到達の位置にはシフトがありません</translation>
    </message>
    <message>
        <source>optional: standard loaded</source>
        <translation>任意: 標準あり</translation>
    </message>
    <message>
        <source>optional: no map</source>
        <translation>任意: マップなし</translation>
    </message>
    <message>
        <source>Compare each block with the standard, or load a map</source>
        <translation>各ブロックを標準と比べるか、マップを読み込みます</translation>
    </message>
    <message>
        <source>Needed where the energy shifts across the detector: select a standard, or load a map</source>
        <translation>検出器面内でエネルギーがずれるとき必要です: 標準を選ぶか、マップを読み込みます</translation>
    </message>
    <message>
        <source>standard changed since</source>
        <translation>標準が変わった</translation>
    </message>
    <message>
        <source>The map in force was made with another standard</source>
        <translation>適用中のマップは別の標準で作られました</translation>
    </message>
    <message>
        <source>median %1, spread %2 eV</source>
        <translation>中央値 %1、幅 %2 eV</translation>
    </message>
    <message>
        <source>The shift map is in force for all spectra</source>
        <translation>シフトマップを全スペクトルに適用しています</translation>
    </message>
    <message>
        <source>Fitting the references to each block</source>
        <translation>各ブロックに参照をフィットしています</translation>
    </message>
    <message>
        <source>The analysis was stopped: positions not reached are 0</source>
        <translation>解析を停止しました: 未到達の位置は 0 です</translation>
    </message>
    <message>
        <source>map is out of date</source>
        <translation>マップが古い</translation>
    </message>
    <message>
        <source>The maps were made under other conditions than those of now</source>
        <translation>マップは今と違う条件で作られました</translation>
    </message>
    <message>
        <source>maps of %1</source>
        <translation>%1のマップ</translation>
    </message>
    <message>
        <source>Maps are ready: choose one above the image</source>
        <translation>マップができました: 画像の上で選べます</translation>
    </message>
    <message>
        <source>no references</source>
        <translation>参照なし</translation>
    </message>
    <message>
        <source>Load the spectra that the blocks are fitted with</source>
        <translation>フィットに使う参照スペクトルを読み込んでください</translation>
    </message>
    <message>
        <source>%1, ready</source>
        <translation>%1、準備完了</translation>
    </message>
    <message>
        <source>Press Analyze to fit each block</source>
        <translation>「解析実行」で各ブロックをフィットします</translation>
    </message>
    <message>
        <source>writing failed</source>
        <translation>書き込み失敗</translation>
    </message>
    <message>
        <source>no maps yet</source>
        <translation>マップなし</translation>
    </message>
    <message>
        <source>Pictures can be saved at once, maps after an analysis</source>
        <translation>画像はすぐに、マップは解析後に保存できます</translation>
    </message>
    <message>
        <source>maps not saved</source>
        <translation>マップ未保存</translation>
    </message>
    <message>
        <source>The maps are not saved</source>
        <translation>マップが保存されていません</translation>
    </message>
    <message>
        <source>saved: %1 of %2 maps</source>
        <translation>保存: %2 枚中 %1 枚</translation>
    </message>
    <message>
        <source>Some of the maps are saved</source>
        <translation>マップの一部を保存しました</translation>
    </message>
    <message>
        <source>saved</source>
        <translation>保存済み</translation>
    </message>
    <message>
        <source>All maps are saved</source>
        <translation>全マップを保存しました</translation>
    </message>
    <message>
        <source>Set Energies</source>
        <translation>エネルギー設定</translation>
    </message>
    <message>
        <source>Use I0</source>
        <translation>I0 を使う</translation>
    </message>
    <message>
        <source>Load...</source>
        <translation>読み込む...</translation>
    </message>
    <message>
        <source>Analyze</source>
        <translation>解析実行</translation>
    </message>
    <message>
        <source>Save Data</source>
        <translation>データを保存</translation>
    </message>
    <message>
        <source>Analyzing each block</source>
        <translation>各ブロックを解析中</translation>
    </message>
    <message>
        <source>maps ready</source>
        <translation>マップあり</translation>
    </message>
    <message>
        <source>not ready</source>
        <translation>準備中</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>準備完了</translation>
    </message>
    <message>
        <source>Press Analyze to analyze each block</source>
        <translation>Analyze を押すと各ブロックを解析します</translation>
    </message>
</context>
<context>
    <name>StepWatch</name>
    <message>
        <source>No image to save: load some in step 1</source>
        <translation>保存する画像がありません: 手順 1 で読み込んでください</translation>
    </message>
    <message>
        <source>No map to save: run an analysis in step 4</source>
        <translation>保存するマップがありません: 手順 4 で解析してください</translation>
    </message>
</context>
<context>
    <name>SumUpCtrl</name>
    <message>
        <source>Images</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>First image of the range, counted from 0</source>
        <translation>範囲の最初の画像 (0 から数える)</translation>
    </message>
    <message>
        <source>The image behind the last one of the range: it is not added itself</source>
        <translation>範囲の最後の画像の次の番号。その画像自身は加えない</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Add the range; one that is added twice counts twice</source>
        <translation>範囲を加える。2 度加えた範囲は 2 度数える</translation>
    </message>
    <message>
        <source>Ranges that were added</source>
        <translation>加えた範囲</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Take the range out of the list; it still counts</source>
        <translation>範囲を一覧から外す。和にはまだ数える</translation>
    </message>
    <message>
        <source>Clear All Ranges</source>
        <translation>全範囲をクリア</translation>
    </message>
    <message>
        <source>No range counts any more</source>
        <translation>どの範囲も数えなくなる</translation>
    </message>
    <message>
        <source>First image of the sum</source>
        <translation>和の最初の画像</translation>
    </message>
    <message>
        <source>End of the images of the sum</source>
        <translation>和の画像の終わり</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>ほか %1</translation>
    </message>
    <message>
        <source>No range counts: the sum is 0</source>
        <translation>数える範囲がない: 和は 0</translation>
    </message>
    <message>
        <source>These count: %1</source>
        <translation>数える範囲: %1</translation>
    </message>
</context>
<context>
    <name>SumUpSection</name>
    <message>
        <source>Sum Up</source>
        <translation>積算</translation>
    </message>
    <message>
        <source>Show the map of the sum of images</source>
        <translation>画像の和のマップを表示する</translation>
    </message>
    <message>
        <source>Add the images of the ranges over the selected area, block by block, and save the picture of the sum as sumUpImg.png</source>
        <translation>選択範囲でブロックごとに各範囲の画像を足し、和の画像を sumUpImg.png に保存する</translation>
    </message>
    <message>
        <source>Stop the sum; the map keeps what is done</source>
        <translation>積算を止める。マップは済んだ分を保つ</translation>
    </message>
</context>
<context>
    <name>TextWindow</name>
    <message>
        <source>Text Files (*.txt)</source>
        <translation>テキストファイル (*.txt)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>保存...</translation>
    </message>
</context>
<context>
    <name>TimeLeft</name>
    <message>
        <source>%1 s left</source>
        <translation>残り %1 秒</translation>
    </message>
    <message>
        <source>%1 min %2 s left</source>
        <translation>残り %1 分 %2 秒</translation>
    </message>
</context>
<context>
    <name>ViewConductor</name>
    <message>
        <source>No energy shift map: make or load one in step 3</source>
        <translation>E シフトマップなし: ステップ 3 で作成または読み込み</translation>
    </message>
    <message>
        <source>No result map: run an analysis in step 4</source>
        <translation>結果マップなし: ステップ 4 で解析を実行</translation>
    </message>
    <message>
        <source>No I0 images: load them in step 1</source>
        <translation>I0 画像なし: ステップ 1 で読み込み</translation>
    </message>
    <message>
        <source>No I1 images: load them in step 1</source>
        <translation>I1 画像なし: ステップ 1 で読み込み</translation>
    </message>
    <message>
        <source>%1 - image %2 of %3 - %4 eV - counts</source>
        <translation>%1 - 画像 %2 / %3 - %4 eV - カウント</translation>
    </message>
    <message>
        <source>%1 blocks of %2 x %3 pixels</source>
        <translation>%2 x %3 画素のブロック %1 個</translation>
    </message>
    <message>
        <source>; %1 without an edge</source>
        <translation>。吸収端なし %1 個</translation>
    </message>
    <message>
        <source>; grey: %1 without an edge</source>
        <translation>。灰色: 吸収端のない %1 個</translation>
    </message>
    <message>
        <source>; median %1, spread %2 eV</source>
        <translation>。中央値 %1、広がり %2 eV</translation>
    </message>
    <message>
        <source>row %1</source>
        <translation>行 %1</translation>
    </message>
    <message>
        <source>Fixed Scale of the analysis is on: it gives the scale</source>
        <translation>解析の「スケール固定」がオンなので、そのスケールを使います</translation>
    </message>
    <message>
        <source> - moved by %1, %2</source>
        <translation> - 移動 %1, %2</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Drop a folder of images here</source>
        <translation>画像のフォルダをここにドロップ</translation>
    </message>
    <message>
        <source>Open Folder...</source>
        <translation>フォルダを開く...</translation>
    </message>
    <message>
        <source>Load the images: I1 behind the sample and I0 without it, one of each for every energy.</source>
        <translation>画像を読み込む: 試料を透過した I1 と試料なしの I0 を、エネルギーごとに 1 枚ずつ。</translation>
    </message>
    <message>
        <source>Look at a spectrum: move the mouse over the image.</source>
        <translation>スペクトルを見る: 画像の上でマウスを動かす。</translation>
    </message>
    <message>
        <source>Load the reference spectra and press Analyze: the maps show how much of each is where.</source>
        <translation>参照スペクトルを読み込み「解析」を押す: どこに何がどれだけあるかがマップになる。</translation>
    </message>
    <message>
        <source>From images to maps</source>
        <translation>画像からマップまで</translation>
    </message>
    <message>
        <source>Or open files</source>
        <translation>ファイルを個別に開く</translation>
    </message>
    <message>
        <source>Open I1 Images...</source>
        <translation>I1 画像を開く...</translation>
    </message>
    <message>
        <source>Open I0 Images...</source>
        <translation>I0 画像を開く...</translation>
    </message>
    <message>
        <source>Open Batch File...</source>
        <translation>バッチファイルを開く...</translation>
    </message>
    <message>
        <source>Opened before</source>
        <translation>最近開いたフォルダ</translation>
    </message>
    <message>
        <source>Last session: %1</source>
        <translation>前回のセッション: %1</translation>
    </message>
</context>
<context>
    <name>Workbench</name>
    <message>
        <source>Spectrum at the position</source>
        <translation>カーソル位置のスペクトル</translation>
    </message>
    <message>
        <source>Analyzing Spectrum</source>
        <translation>解析中のスペクトル</translation>
    </message>
    <message>
        <source>BG Specturm</source>
        <translation>BG スペクトル</translation>
    </message>
    <message>
        <source>Batch</source>
        <translation>バッチ</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>メッセージ</translation>
    </message>
    <message>
        <source>Open Folder...</source>
        <translation>フォルダを開く...</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>データ</translation>
    </message>
    <message>
        <source>Spectrum</source>
        <translation>スペクトル</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>較正</translation>
    </message>
    <message>
        <source>Analysis</source>
        <translation>解析</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>History</source>
        <translation>履歴</translation>
    </message>
    <message>
        <source>Diagnostics</source>
        <translation>診断</translation>
    </message>
    <message>
        <source>Registration</source>
        <translation>位置合わせ</translation>
    </message>
</context>
<context>
    <name>XafsFileSelect</name>
    <message>
        <source>XAFS File Select</source>
        <translation>XAFS ファイルの選択</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>Use this file</source>
        <translation>このファイルを使う</translation>
    </message>
    <message>
        <source>File of the spectrum</source>
        <translation>スペクトルのファイル</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Choose the file</source>
        <translation>ファイルを選択する</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>Work without this file</source>
        <translation>このファイルを使わない</translation>
    </message>
    <message>
        <source>XAFS Data File (*.dat)</source>
        <translation>XAFS データファイル (*.dat)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>drop a file here</source>
        <translation>ここにドロップ</translation>
    </message>
    <message>
        <source>Select Spectrum File</source>
        <translation>スペクトルファイルの選択</translation>
    </message>
</context>
<context>
    <name>XafsView</name>
    <message>
        <source>Spectrum</source>
        <translation>スペクトル</translation>
    </message>
    <message>
        <source>Edge step and edge energy [eV] of the spectrum, and why an edge could not be found</source>
        <translation>スペクトルの吸収端ジャンプと吸収端エネルギー [eV]、および吸収端を決められない理由</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>番号</translation>
    </message>
    <message>
        <source>Index of the data point nearest to the mouse, from 0</source>
        <translation>マウスに最も近いデータ点の番号 (0 から)</translation>
    </message>
    <message>
        <source>E [eV]</source>
        <translation>E [eV]</translation>
    </message>
    <message>
        <source>Energy under the mouse [eV]. Drag the plot to move along the energy, turn the wheel to zoom</source>
        <translation>マウス位置のエネルギー [eV]。グラフのドラッグでエネルギー方向に移動、ホイールで拡大・縮小</translation>
    </message>
    <message>
        <source>Value under the mouse on the axis shown, that of the black curve: absorption, or normalised absorption</source>
        <translation>マウス位置の縦軸の値 (黒い曲線の軸): 吸収または規格化吸収</translation>
    </message>
    <message>
        <source>Normalized</source>
        <translation>規格化</translation>
    </message>
    <message>
        <source>Show the curves normalised to an edge step of 1, without their background lines</source>
        <translation>バックグラウンド直線を除き、吸収端ジャンプを 1 に規格化した曲線を表示する</translation>
    </message>
    <message>
        <source>E. Correct</source>
        <translation>E 補正</translation>
    </message>
    <message>
        <source>Move the spectrum down in energy by the edge shift of its position [eV]; the standard stays</source>
        <translation>スペクトルをその位置の吸収端シフト [eV] だけ低エネルギー側へ移す。標準試料は動かさない</translation>
    </message>
    <message>
        <source>Raw</source>
        <translation>生データ</translation>
    </message>
    <message>
        <source>Show the raw values in place of the spectra, over the number of points</source>
        <translation>スペクトルの代わりに生の値を点番号に対して表示する</translation>
    </message>
    <message>
        <source>FFT</source>
        <translation>FFT</translation>
    </message>
    <message>
        <source>Show the magnitudes of the lowest frequencies of the raw values; with Raw</source>
        <translation>生の値の低周波成分の大きさを表示する (「生データ」と併用)</translation>
    </message>
    <message>
        <source>S.R.</source>
        <translation>軸リセット</translation>
    </message>
    <message>
        <source>Reset X Axis Scale</source>
        <translation>X 軸のスケールをリセットする</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save the spectra shown, each in a text file of its own</source>
        <translation>表示中のスペクトルをそれぞれ別のテキストファイルに保存する</translation>
    </message>
    <message>
        <source>Energy [eV]</source>
        <translation>エネルギー [eV]</translation>
    </message>
    <message>
        <source>dMut = %1, Edge %2 [eV] : %3 %4</source>
        <translation>Δμt = %1, 吸収端 %2 [eV] : %3 %4</translation>
    </message>
    <message>
        <source>Out of Range midx</source>
        <translation>吸収端の中点が範囲外</translation>
    </message>
    <message>
        <source>Noizy to decide midx</source>
        <translation>雑音のため中点を決められない</translation>
    </message>
    <message>
        <source>Data File (*.dat)</source>
        <translation>データファイル (*.dat)</translation>
    </message>
    <message>
        <source>Any Files (* *.*)</source>
        <translation>すべてのファイル (* *.*)</translation>
    </message>
    <message>
        <source>Frequency no.</source>
        <translation>周波数番号</translation>
    </message>
    <message>
        <source>Save Spectra: %1</source>
        <translation>スペクトルを保存: %1</translation>
    </message>
    <message>
        <source>mu t</source>
        <translation>μt</translation>
    </message>
    <message>
        <source>normalised mu t</source>
        <translation>規格化した μt</translation>
    </message>
    <message>
        <source>counts</source>
        <translation>カウント</translation>
    </message>
    <message>
        <source>power</source>
        <translation>強度</translation>
    </message>
    <message>
        <source>standard</source>
        <translation>標準</translation>
    </message>
    <message>
        <source>No spectrum yet: load images in step 1</source>
        <translation>スペクトルがまだありません: ステップ 1 で画像を読み込んでください</translation>
    </message>
</context>
</TS>
