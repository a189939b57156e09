// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Everything that the library offers, in one include.

#include <lorix/bounds.h>
#include <lorix/export.h>

// Messages, timing and version.
#include <lorix/runner/applicationdir.h>
#include <lorix/runner/logsource.h>
#include <lorix/runner/stopwatch.h>
#include <lorix/runner/version.h>

// Containers: markers, lines, parser, content.
#include <lorix/container/bytebuffers.h>
#include <lorix/container/fileiterator.h>
#include <lorix/container/filetag.h>
#include <lorix/container/filewindow.h>
#include <lorix/container/inflater.h>
#include <lorix/container/inflatewhole.h>
#include <lorix/container/lorixparser.h>
#include <lorix/container/markerline.h>
#include <lorix/container/md5generator.h>
#include <lorix/container/parsemode.h>
#include <lorix/container/sectiontag.h>

// Checking and extracting in steps.
#include <lorix/queues/extractee.h>
#include <lorix/queues/extractionqueue.h>
#include <lorix/queues/progresspercent.h>
#include <lorix/queues/savedfile.h>
#include <lorix/queues/storedrange.h>
#include <lorix/queues/validatee.h>
#include <lorix/queues/validationqueue.h>
#include <lorix/queues/validator.h>

// Summaries of steps and files.
#include <lorix/summary/filesummary.h>
#include <lorix/summary/makesummaries.h>
#include <lorix/summary/printsummary.h>
#include <lorix/summary/summary.h>
#include <lorix/summary/summarycreator.h>
#include <lorix/summary/summaryreader.h>
#include <lorix/summary/tagdistance.h>
#include <lorix/summary/textvalues.h>
#include <lorix/summary/tripple.h>
#include <lorix/summary/vxmllevel1iter.h>
#include <lorix/summary/workflowstep.h>

// Trees of steps and their comparison.
#include <lorix/tree/costmatrix.h>
#include <lorix/tree/dijkstra.h>
#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/lorixdiffresult.h>
#include <lorix/tree/lorixfilemanager.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>
#include <lorix/tree/priorityqueue.h>
#include <lorix/tree/quickmatch.h>
#include <lorix/tree/searchlimits.h>
#include <lorix/tree/templorixfile.h>
#include <lorix/tree/temporaryfolder.h>
#include <lorix/tree/treeids.h>
#include <lorix/tree/workflowstepcosts.h>
#include <lorix/tree/workflowtree.h>
#include <lorix/tree/workflowtreenode.h>

// The query language.
#include <lorix/query/cnfconstruction.h>
#include <lorix/query/cnfdisjunction.h>
#include <lorix/query/cnfliteral.h>
#include <lorix/query/cnfliteralindex.h>
#include <lorix/query/cnfoperand.h>
#include <lorix/query/conjunctivenormalform.h>
#include <lorix/query/expressiontreenode.h>
#include <lorix/query/expressionvalue.h>
#include <lorix/query/lorixfindquery.h>
#include <lorix/query/operatortable.h>
#include <lorix/query/querycandidate.h>
#include <lorix/query/querycompletion.h>
#include <lorix/query/queryerror.h>
#include <lorix/query/queryevaluation.h>
#include <lorix/query/querylexer.h>
#include <lorix/query/queryoperators.h>
#include <lorix/query/queryparser.h>
#include <lorix/query/querysyntax.h>
#include <lorix/query/querytree.h>
#include <lorix/query/querytypes.h>
#include <lorix/query/returnvalue.h>
#include <lorix/query/wildcardpattern.h>

// The invocation of the add tool.
#include <lorix/argfile/argfile.h>
#include <lorix/argfile/argfileparser.h>
#include <lorix/argfile/argfilereader.h>
#include <lorix/argfile/argfiletoken.h>
#include <lorix/argfile/argumentlist.h>
#include <lorix/argfile/userattributes.h>
#include <lorix/argfile/wsfile.h>

// Running the external tools.
#include <lorix/runner/lorixaddrunner.h>
#include <lorix/runner/lorixdelrunner.h>
#include <lorix/runner/lorixrunner.h>
